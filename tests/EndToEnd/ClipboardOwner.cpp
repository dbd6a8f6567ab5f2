// Another program's clipboard: text, HTML and a large image, offered by Qt. Prints "owned" once it owns the clipboard;
// writes the image's bytes to the given file, for comparison.

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
    // Random, so that PNG cannot compress it.
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
