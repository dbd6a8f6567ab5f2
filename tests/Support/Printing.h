#pragma once

#include <QString>

#include <gtest/gtest.h>

#include <ostream>

// Global, because GoogleTest finds these by argument-dependent lookup.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace talmo::test {

/// A QString literal.
inline QString operator""_s(const char16_t *text, std::size_t length)
{
    return QString(reinterpret_cast<const QChar *>(text), static_cast<qsizetype>(length));
}

} // namespace talmo::test
