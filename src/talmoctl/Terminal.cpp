#include "talmoctl/Terminal.h"

#include "Base/Error.h"

#include <QFile>
#include <QStringDecoder>

#include <cstdio>

namespace talmo::ctl {

QString readInput()
{
    QFile input;
    if (!input.open(stdin, QFile::ReadOnly)) {
        throw Error(QStringLiteral("cannot read stdin"));
    }
    QByteArray bytes = input.readAll();
    if (input.error() != QFile::NoError) {
        throw Error(QStringLiteral("cannot read stdin: ") + input.errorString());
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder.decode(bytes);
    if (decoder.hasError()) {
        throw Error(QStringLiteral("stdin is not valid UTF-8"));
    }
    return text;
}

QString readInputLine()
{
    QFile input;
    return input.open(stdin, QFile::ReadOnly) ? QString::fromUtf8(input.readLine()) : QString();
}

void writeOutput(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    const auto size = static_cast<std::size_t>(bytes.size());
    if (std::fwrite(bytes.constData(), 1, size, stdout) != size || std::fflush(stdout) != 0) {
        throw Error(QStringLiteral("cannot write to stdout"));
    }
}

void writeLine(const QString &text)
{
    writeOutput(text + QLatin1Char('\n'));
}

void complain(const QString &text)
{
    std::fprintf(stderr, "talmoctl: %s\n", qUtf8Printable(text));
}

} // namespace talmo::ctl
