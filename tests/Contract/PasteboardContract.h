#pragma once

#include "Contract/ContractTest.h"
#include "Insertion/Pasteboard.h"
#include "Support/Printing.h"
#include "Support/TestLoop.h"

#include <gtest/gtest.h>

namespace talmo::test {

/// What every pasteboard promises. A subject has `pasteboard`, which is empty at first.
template <typename Subject>
class PasteboardContract : public ContractTest<Subject> {
protected:
    Pasteboard &pasteboard() { return this->subject().pasteboard; }
    QList<PasteboardItem> items()
    {
        const auto future = pasteboard().items();
        EXPECT_TRUE(waitFor(future));
        return future.result();
    }
    static QByteArray textOf(const QList<PasteboardItem> &items)
    {
        for (const auto &item : items) {
            for (const auto &representation : item.representations) {
                if (representation.type == u"UTF8_STRING"_s) {
                    return representation.data;
                }
            }
        }
        return {};
    }
};

TYPED_TEST_SUITE_P(PasteboardContract);

TYPED_TEST_P(PasteboardContract, isEmptyInitially)
{
    EXPECT_TRUE(this->items().isEmpty());
}

TYPED_TEST_P(PasteboardContract, returnsTheString)
{
    this->pasteboard().clearContents();
    this->pasteboard().setString(u"héllo – \U0001F600\nworld"_s);
    EXPECT_EQ(this->textOf(this->items()), u"héllo – \U0001F600\nworld"_s.toUtf8());
}

TYPED_TEST_P(PasteboardContract, clearingLeavesNothing)
{
    this->pasteboard().setString(u"text"_s);
    this->pasteboard().clearContents();
    EXPECT_TRUE(this->items().isEmpty());
}

TYPED_TEST_P(PasteboardContract, returnsItemsByteForByteInOrder)
{
    QByteArray large(3 << 20, '\0');
    for (qsizetype index = 0; index < large.size(); ++index) {
        large[index] = static_cast<char>(index * 7);
    }
    const QList<PasteboardItem> items = {
        PasteboardItem{{{u"text/html"_s, "<b>x</b>", u"text/html"_s, 8},
                        {u"image/png"_s, large, u"image/png"_s, 8},
                        {u"_NUMBERS"_s, QByteArray("\1\0\0\0\2\0\0\0", 8), u"INTEGER"_s, 32},
                        {u"_EMPTY"_s, QByteArray(), u"STRING"_s, 8}}}};
    this->pasteboard().clearContents();
    this->pasteboard().writeItems(items);
    EXPECT_EQ(this->items(), items);
}

TYPED_TEST_P(PasteboardContract, executesCallsInOrder)
{
    this->pasteboard().setString(u"one"_s);
    const auto first = this->pasteboard().items();
    this->pasteboard().setString(u"two"_s);
    const auto second = this->pasteboard().items();
    ASSERT_TRUE(waitFor(second));
    EXPECT_EQ(this->textOf(first.result()), "one");
    EXPECT_EQ(this->textOf(second.result()), "two");
}

TYPED_TEST_P(PasteboardContract, interruptedPasteKeepsText)
{
    this->pasteboard().beginPaste();
    this->items();
    this->pasteboard().clearContents();
    this->pasteboard().setString(u"kept"_s);
    this->pasteboard().endPaste();
    ASSERT_TRUE(waitFor(this->pasteboard().settled()));
    EXPECT_EQ(this->textOf(this->items()), "kept");
}

REGISTER_TYPED_TEST_SUITE_P(PasteboardContract, isEmptyInitially, returnsTheString, clearingLeavesNothing,
                            returnsItemsByteForByteInOrder, executesCallsInOrder, interruptedPasteKeepsText);

} // namespace talmo::test
