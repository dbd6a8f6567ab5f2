#include "Platform/Linux/Session/KdeColours.h"

#include <QFile>
#include <QSettings>
#include <QStandardPaths>

namespace talmo {

namespace {

const QString defaultScheme = QStringLiteral("BreezeLight");

/// Colours are written as "239,240,241", which QSettings reads as a list.
std::optional<QColor> colourIn(const QSettings &file, const QString &set, const QString &name)
{
    const auto parts = file.value(QStringLiteral("Colors:%1/%2").arg(set, name)).toStringList();
    constexpr qsizetype channels = 3;
    if (parts.size() < channels) {
        return std::nullopt;
    }
    const QColor colour(parts[0].toInt(), parts[1].toInt(), parts[2].toInt());
    return colour.isValid() ? std::optional(colour) : std::nullopt;
}

/// None if the file has no colours.
std::optional<QPalette> paletteIn(const QString &path)
{
    const QSettings file(path, QSettings::IniFormat);
    const auto window = colourIn(file, QStringLiteral("Window"), QStringLiteral("BackgroundNormal"));
    const auto button = colourIn(file, QStringLiteral("Button"), QStringLiteral("BackgroundNormal"));
    if (!window || !button) {
        return std::nullopt;
    }
    struct Entry {
        QPalette::ColorRole role;
        const char *set;
        const char *name;
    };
    constexpr Entry entries[] = {{QPalette::WindowText, "Window", "ForegroundNormal"},
                                 {QPalette::Base, "View", "BackgroundNormal"},
                                 {QPalette::AlternateBase, "View", "BackgroundAlternate"},
                                 {QPalette::Text, "View", "ForegroundNormal"},
                                 {QPalette::Link, "View", "ForegroundLink"},
                                 {QPalette::PlaceholderText, "View", "ForegroundInactive"},
                                 {QPalette::ButtonText, "Button", "ForegroundNormal"},
                                 {QPalette::Highlight, "Selection", "BackgroundNormal"},
                                 {QPalette::HighlightedText, "Selection", "ForegroundNormal"},
                                 {QPalette::ToolTipBase, "Tooltip", "BackgroundNormal"},
                                 {QPalette::ToolTipText, "Tooltip", "ForegroundNormal"}};
    QPalette palette(*button, *window); // With shades of these for raised and sunken elements.
    for (const auto &[role, set, name] : entries) {
        if (const auto colour = colourIn(file, QString::fromLatin1(set), QString::fromLatin1(name))) {
            palette.setColor(role, *colour);
        }
    }
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        constexpr float disabledStrength = 0.4F;
        QColor faint = palette.color(QPalette::Active, role);
        faint.setAlphaF(disabledStrength);
        palette.setColor(QPalette::Disabled, role, faint);
    }
    return palette;
}

QString chosenScheme(const QStringList &settings)
{
    for (const auto &path : settings) {
        const QString scheme = QSettings(path, QSettings::IniFormat).value(QStringLiteral("ColorScheme")).toString();
        if (!scheme.isEmpty()) {
            return scheme;
        }
    }
    return defaultScheme;
}

} // namespace

std::optional<QPalette> kdePalette(const QStringList &settings, const QStringList &schemes)
{
    QStringList candidates = settings;
    for (const auto &folder : schemes) {
        candidates.append(QStringLiteral("%1/%2.colors").arg(folder, chosenScheme(settings)));
    }
    for (const auto &path : candidates) {
        if (const auto palette = QFile::exists(path) ? paletteIn(path) : std::nullopt) {
            return palette;
        }
    }
    return std::nullopt;
}

std::optional<QPalette> kdePalette()
{
    return kdePalette(QStandardPaths::locateAll(QStandardPaths::GenericConfigLocation, QStringLiteral("kdeglobals")),
                      QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("color-schemes"),
                                                QStandardPaths::LocateDirectory));
}

} // namespace talmo
