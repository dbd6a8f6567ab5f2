#include "Insertion/SpacedInsertionService.h"

#include <QStringView>

#include <utility>

namespace talmo {

namespace {

char32_t firstCharacter(const QString &text)
{
    const bool isPair = text.size() > 1 && text.at(0).isHighSurrogate() && text.at(1).isLowSurrogate();
    return isPair ? QChar::surrogateToUcs4(text.at(0), text.at(1)) : text.at(0).unicode();
}

char32_t lastCharacter(const QString &text)
{
    const auto size = text.size();
    const bool isPair = size > 1 && text.at(size - 2).isHighSurrogate() && text.at(size - 1).isLowSurrogate();
    return isPair ? QChar::surrogateToUcs4(text.at(size - 2), text.at(size - 1)) : text.back().unicode();
}

bool isWrittenWithoutSpaces(char32_t character)
{
    switch (QChar::script(character)) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
    case QChar::Script_Bopomofo:
    case QChar::Script_Thai:
    case QChar::Script_Lao:
    case QChar::Script_Khmer:
    case QChar::Script_Myanmar:
        return true;
    default:
        break;
    }
    constexpr char32_t firstFullWidth = 0x3000; // The punctuation of those scripts, which contains its own space.
    constexpr char32_t lastFullWidth = 0x303f;
    constexpr char32_t firstFullWidthForm = 0xff01;
    constexpr char32_t lastFullWidthForm = 0xff65;
    return (character >= firstFullWidth && character <= lastFullWidth) ||
           (character >= firstFullWidthForm && character <= lastFullWidthForm);
}

bool opens(char32_t character)
{
    const auto category = QChar::category(character);
    return category == QChar::Punctuation_Open || category == QChar::Punctuation_InitialQuote || character == U'¿' ||
           character == U'¡';
}

bool followsWithoutSpace(char32_t character)
{
    const auto category = QChar::category(character);
    return category == QChar::Punctuation_Close || category == QChar::Punctuation_FinalQuote ||
           QStringView(u".,;:!?…%").contains(QChar(static_cast<char16_t>(character)));
}

} // namespace

bool needsSpaceBetween(const QString &before, const QString &text)
{
    if (before.isEmpty() || text.isEmpty()) {
        return false;
    }
    const char32_t last = lastCharacter(before);
    const char32_t next = firstCharacter(text);
    return !QChar::isSpace(last) && !QChar::isSpace(next) && !opens(last) && !followsWithoutSpace(next) &&
           !isWrittenWithoutSpaces(last) && !isWrittenWithoutSpaces(next);
}

SpacedInsertionService::SpacedInsertionService(std::shared_ptr<TextInsertionService> service,
                                               std::shared_ptr<CursorWatch> cursor, std::function<bool()> isOn)
    : m_service(std::move(service)),
      m_cursor(std::move(cursor)),
      m_isOn(std::move(isOn))
{
}

QCoro::Task<void> SpacedInsertionService::insert(QString text)
{
    if (!m_isOn()) {
        return insertExactly(text);
    }
    // Marked before the insertion, so that a key pressed during it counts.
    const bool continues = m_cursor->markPlace() && needsSpaceBetween(*m_last, text);
    m_last->clear();
    return insertAndRemember(m_service, continues ? QLatin1Char(' ') + text : text, m_last);
}

QCoro::Task<void> SpacedInsertionService::insertExactly(QString text)
{
    m_cursor->forget();
    m_last->clear();
    return m_service->insert(text);
}

QCoro::Task<void> SpacedInsertionService::insertAndRemember(std::shared_ptr<TextInsertionService> service, QString text,
                                                            Last last)
{
    co_await service->insert(text);
    *last = text;
}

} // namespace talmo
