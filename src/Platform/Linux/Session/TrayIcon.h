#pragma once

#include "Platform/Linux/Session/TrayEmbedding.h"
#include "UI/Menu/StatusItem.h"
#include "UI/Style/Symbol.h"

#include <QColor>
#include <QMenu>
#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

namespace talmo {

/// The icon in the desktop's tray: by StatusNotifierItem if a host for that is running, else by XEmbed. A tray that
/// starts after Talmo is used as soon as it appears. D-Bus calls are asynchronous.
class TrayIcon final : public QObject, public StatusItem {
public:
    /// `embedding`: null on desktops without that kind of tray.
    explicit TrayIcon(std::shared_ptr<TrayEmbedding> embedding);

    void setSymbol(const QString &symbol) override;
    void setMenu(const MenuContents &contents) override;
    void setOnActivated(std::function<void(std::optional<QRect>)> callback) override;
    void setOnChosen(std::function<void(MenuAction)> callback) override;
    bool isShown() const override { return m_icon != nullptr; }
    void closeMenu() override;

    /// Redraws the icon after the desktop's colours have changed.
    void redraw();

private:
    void watchNotifierHosts();
    void askForNotifierHost();
    void askForEmbedder();
    void create();
    void readBackground();
    Symbol::Inks inks() const;
    void addEntry(const MenuEntry &entry);
    void addNote(const QString &text);

    std::shared_ptr<TrayEmbedding> m_embedding;
    QString m_symbol;
    QString m_toolTip;
    std::function<void(std::optional<QRect>)> m_onActivated;
    std::function<void(MenuAction)> m_onChosen;
    QMenu m_menu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    std::optional<QColor> m_ground;
    bool m_isGroundWanted = false;
    bool m_saidThatThereIsNone = false;
};

} // namespace talmo
