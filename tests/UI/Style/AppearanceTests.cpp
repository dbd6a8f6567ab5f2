// Colours and custom painting, compared pixel by pixel.

#include "UI/Style/Appearance.h"

#include "UI/DrawnView.h"
#include "UI/Settings/SettingsSection.h"
#include "UI/Style/KeyCap.h"
#include "UI/Style/Separator.h"
#include "UI/Style/Symbol.h"
#include "UI/Style/SymbolLabel.h"
#include "UI/Style/TintedLabel.h"
#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

#include <QGuiApplication>

namespace talmo::test {

namespace {

QPalette light()
{
    return Appearance::palette(ColourScheme::Light);
}

QPalette dark()
{
    return Appearance::palette(ColourScheme::Dark);
}

QColor faded(QColor colour, float alpha)
{
    colour.setAlphaF(alpha);
    return colour;
}

QColor text(const QWidget &view)
{
    return view.palette().color(QPalette::WindowText);
}

/// The thin, faint frame around key caps and groups.
void paintFrame(QPainter &painter, const QWidget &view, const QColor &ground, qreal radius)
{
    painter.setPen(QPen(faded(text(view), 0.12F), 1));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(0.5, 0.5, view.width() - 1, view.height() - 1), radius, radius);
}

} // namespace

TEST(Appearance, disabledTextIsFainterThanSecondaryText)
{
    for (const auto scheme : {ColourScheme::Light, ColourScheme::Dark}) {
        QPalette palette = Appearance::palette(scheme);
        const float before = Appearance::secondary(palette).alphaF();
        palette.setCurrentColorGroup(QPalette::Disabled);
        EXPECT_LT(Appearance::secondary(palette).alphaF(), before - 0.1F);
    }
}

TEST(Appearance, hasExpectedSizes)
{
    EXPECT_EQ(Appearance::titleSize, 13);
    EXPECT_EQ(Appearance::detailSize, 12);
    EXPECT_EQ(Appearance::captionSize, 11);
    const QFont font = Appearance::font(17, QFont::Bold);
    EXPECT_EQ(font.pixelSize(), 17);
    EXPECT_EQ(font.weight(), QFont::Bold);
    EXPECT_EQ(font.family(), QGuiApplication::font().family());
    EXPECT_EQ(Appearance::font(11).weight(), QFont::Normal);
}

TEST(Appearance, judgesSchemeByWindowColour)
{
    EXPECT_TRUE(Appearance::isDark(dark()));
    EXPECT_FALSE(Appearance::isDark(light()));
    EXPECT_EQ(Appearance::scheme(dark()), ColourScheme::Dark);
    EXPECT_EQ(Appearance::scheme(light()), ColourScheme::Light);
    QPalette grey = light();
    grey.setColor(QPalette::Window, Qt::gray);
    grey.setColor(QPalette::WindowText, Qt::gray);
    EXPECT_FALSE(Appearance::isDark(grey));
}

TEST(Appearance, dimsTextColour)
{
    for (const auto &palette : {light(), dark()}) {
        const QColor ink = palette.color(QPalette::WindowText);
        EXPECT_EQ(Appearance::secondary(palette), faded(ink, 0.66F));
        EXPECT_EQ(Appearance::hairline(palette), faded(ink, 0.12F));
        EXPECT_EQ(Appearance::groupSurface(palette), faded(ink, 0.045F));
    }
}

TEST(Appearance, warningAndSuccessColoursAreLegible)
{
    EXPECT_EQ(Appearance::orange(dark()), QColor(255, 163, 58));
    EXPECT_EQ(Appearance::orange(light()), QColor(166, 77, 0));
    EXPECT_EQ(Appearance::green(dark()), QColor(76, 217, 100));
    EXPECT_EQ(Appearance::green(light()), QColor(24, 116, 49));
}

TEST(Appearance, hasPaletteForEachScheme)
{
    const auto names = [](const QPalette &palette) {
        QStringList colours;
        for (const auto role : {QPalette::Window, QPalette::WindowText, QPalette::Base, QPalette::AlternateBase,
                                QPalette::Text, QPalette::Button, QPalette::ButtonText, QPalette::Highlight,
                                QPalette::HighlightedText, QPalette::Link, QPalette::ToolTipBase, QPalette::ToolTipText,
                                QPalette::Light, QPalette::Mid, QPalette::Dark, QPalette::BrightText}) {
            colours.append(palette.color(role).name().mid(1));
        }
        return colours.join(QLatin1Char(' '));
    };
    EXPECT_EQ(names(light()),
              u"f4f4f6 1c1c1e ffffff f4f4f6 1c1c1e fafafb 1c1c1e 4b5bdc ffffff 4b5bdc f4f4f6 1c1c1e ffffff "
              u"d6d6da b4b4ba ffffff"_s);
    EXPECT_EQ(names(dark()),
              u"242528 f0f0f2 1b1c1f 242528 f0f0f2 3a3b40 f0f0f2 5767eb ffffff 8f9cff 242528 f0f0f2 4a4b50 "
              u"1e1e21 121214 ffffff"_s);
    for (const auto &palette : {light(), dark()}) {
        EXPECT_EQ(palette.color(QPalette::PlaceholderText), Appearance::secondary(palette));
        for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
            EXPECT_EQ(palette.color(QPalette::Disabled, role), faded(palette.color(QPalette::WindowText), 0.4F));
        }
    }
}

TEST(KeyCap, isDrawnAsAKey)
{
    KeyCap cap;
    cap.setText(u"<b>F13</b>"_s);
    EXPECT_EQ(cap.textFormat(), Qt::PlainText);
    EXPECT_EQ(cap.font().pixelSize(), 12);
    EXPECT_EQ(cap.font().weight(), QFont::Medium);
    EXPECT_EQ(margins(cap.contentsMargins()), u"9,3,9,4"_s);
    cap.setText({});
    cap.resize(60, 24);
    EXPECT_TRUE(drawn(cap) == drawn(cap.size(), [&](QPainter &painter) {
                    paintFrame(painter, cap, cap.palette().color(QPalette::Base), 5);
                }));
}

TEST(Separator, isCentredHairline)
{
    Separator line(11, 8);
    line.resize(100, 11);
    EXPECT_EQ(line.height(), 11);
    EXPECT_TRUE(drawn(line) == drawn(line.size(), [&](QPainter &painter) {
                    painter.fillRect(QRect(8, 5, 84, 1), faded(text(line), 0.12F));
                }));
}

TEST(SettingsSection, paintsItsSurface)
{
    SettingsSection section;
    section.addCaption({});
    section.resize(200, 60);
    section.show();
    auto *surface = section.layout()->itemAt(0)->widget();
    ASSERT_NE(surface, nullptr);
    EXPECT_TRUE(drawn(*surface) == drawn(surface->size(), [&](QPainter &painter) {
                    paintFrame(painter, *surface, faded(text(*surface), 0.045F), 8);
                }));
}

TEST(SymbolLabel, paintsSymbolInItsColour)
{
    SymbolLabel label(u"power"_s, &Appearance::orange, 16);
    EXPECT_EQ(label.size(), QSize(16, 16));
    const auto expected = [&](const QString &symbol, const QColor &colour) {
        return drawn(label.size(),
                     [&](QPainter &painter) { painter.drawPixmap(0, 0, Symbol::pixmap(symbol, 16, colour, 1)); });
    };
    EXPECT_TRUE(drawn(label) == expected(u"power"_s, Appearance::orange(label.palette())));
    label.setSymbol(u"return"_s, &Appearance::green);
    EXPECT_TRUE(drawn(label) == expected(u"return"_s, Appearance::green(label.palette())));
    EXPECT_EQ(label.symbol(), u"return"_s);
}

TEST(TintedLabel, paintsTextInItsColour)
{
    const auto *caption = TintedLabel::caption(u"<b>words</b>"_s);
    EXPECT_EQ(caption->textFormat(), Qt::PlainText);
    EXPECT_TRUE(caption->wordWrap());
    EXPECT_EQ(caption->font().pixelSize(), 11);
    delete caption;
    TintedLabel label(Appearance::font(13), [](const QPalette &) { return QColor(Qt::red); });
    label.setText(u"several words that do not fit into one line"_s);
    label.resize(120, 80);
    EXPECT_TRUE(drawn(label) == drawn(label.size(), [&](QPainter &painter) {
                    painter.setFont(label.font());
                    painter.setPen(Qt::red);
                    painter.drawText(QRect(0, 0, 120, 80), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextWordWrap,
                                     label.text());
                }));
}

} // namespace talmo::test
