// Another program's clipboard: text, HTML and a large image, offered by Qt's own implementation. Says "owned" once it
// has it; the image's bytes go to the file given, to compare with.

#include <QBuffer>
#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

#include <cstdio>

int main(int argc, char **argv)
{
    QGuiApplication application(argc, argv);
    // Random enough that PNG cannot make it small.
    QByteArray noise(2 << 20, '\0');
    quint32 state = 1;
    for (auto &byte : noise) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>(state >> 24);
    }
    auto *data = new QMimeData;
    data->setText(QStringLiteral("plain – text"));
    data->setHtml(QStringLiteral("<b>rich</b> text"));
    data->setData(QStringLiteral("image/x-talmo-test"), noise);
    QFile file(QGuiApplication::arguments().value(1));
    if (!file.open(QFile::WriteOnly) || file.write(noise) != noise.size()) {
        return 1;
    }
    file.close();
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, [] {
        std::puts("owned");
        std::fflush(stdout);
    });
    QGuiApplication::clipboard()->setMimeData(data);
    return QGuiApplication::exec();
}
