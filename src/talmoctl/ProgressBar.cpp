#include "talmoctl/ProgressBar.h"

#include "talmoctl/Terminal.h"

#include <cstdio>

#include <unistd.h>

namespace talmo::ctl {

namespace {

void writeRaw(const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
}

} // namespace

void ProgressBar::show(const ModelProgress &progress)
{
    if (::isatty(STDERR_FILENO) == 0) {
        if (!m_last || m_last->phase != progress.phase) {
            complain(progress.description());
        }
        m_last = progress;
        return;
    }
    m_last = progress;
    constexpr int width = 30;
    const int filled = static_cast<int>(progress.share().value_or(0) * width);
    const QString bar = QStringLiteral("#").repeated(filled) + QStringLiteral(".").repeated(width - filled);
    writeRaw(QStringLiteral("\r[%1] %2\x1b[K").arg(bar, progress.description()));
    m_isOpen = true;
}

ProgressBar::~ProgressBar()
{
    if (m_isOpen) {
        writeRaw(QStringLiteral("\n"));
    }
}

} // namespace talmo::ctl
