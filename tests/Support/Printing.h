#pragma once

#include <QString>

#include <gtest/gtest.h>

#include <ostream>

// GoogleTest finds these by the argument's namespace, so they stand in the global one.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace talmo::test {

/// Short for a QString from UTF-8 source text.
inline QString operator""_s(const char16_t *text, std::size_t length)
{
    return QString(reinterpret_cast<const QChar *>(text), static_cast<qsizetype>(length));
}

} // namespace talmo::test
