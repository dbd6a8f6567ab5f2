// EntryWindow.cpp for Qt.

#include <QApplication>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QWindow>

#include <cstdio>

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle(QStringLiteral("Target"));
    auto *layout = new QVBoxLayout(&window);
    auto *ordinary = new QLineEdit;
    auto *password = new QLineEdit;
    password->setEchoMode(QLineEdit::Password);
    for (auto *entry : {ordinary, password}) {
        layout->addWidget(entry);
        QObject::connect(entry, &QLineEdit::textChanged, entry, [](const QString &text) {
            std::printf("text: %s\n", text.toUtf8().constData());
            std::fflush(stdout);
        });
    }
    QObject::connect(&application, &QGuiApplication::focusWindowChanged, &window, [](const QWindow *focused) {
        std::printf("focus: %s\n", focused != nullptr ? "yes" : "no");
        std::fflush(stdout);
    });
    window.show();
    const bool isPassword = QApplication::arguments().value(1) == QLatin1String("password");
    (isPassword ? password : ordinary)->setFocus();
    return QApplication::exec();
}
