#include "Platform/Linux/X11/Clipboard/OverduePastes.h"

#include "Insertion/RestorePolicy.h"

#include <algorithm>

namespace talmo {

OverduePastes::OverduePastes(XSession &session, SelectionServer &clipboard, SelectionServer &primary)
    : m_clipboard(clipboard),
      m_primary(primary),
      m_ping(session)
{
    m_ping.setOnAnswer([this](xcb_window_t topLevel) { handleAnswer(topLevel); });
}

void OverduePastes::stopAsking(const FrontWindow &window)
{
    if (!m_kept.contains(window.client)) {
        m_ping.forget(window.topLevel);
    }
}

void OverduePastes::add(const FrontWindow &window, const QString &text)
{
    m_kept[window.client] = {window.topLevel, text};
    serve(window.client);
}

bool OverduePastes::extend(const FrontWindow &window, const QString &text)
{
    const auto kept = m_kept.find(window.client);
    if (kept == m_kept.end() || !m_ping.isUnanswered(kept->second.topLevel)) {
        drop(window.client);
        return false;
    }
    kept->second.text += text;
    serve(window.client);
    return true;
}

void OverduePastes::noteRead(quint32 client)
{
    if (m_kept.contains(client)) {
        dropLater(client, RestorePolicy::quietTime); // Some programs read twice.
    }
}

void OverduePastes::clear()
{
    while (!m_kept.empty()) {
        drop(m_kept.begin()->first);
    }
}

void OverduePastes::serve(quint32 client)
{
    const auto content = textRepresentations(m_kept[client].text);
    m_clipboard.owe(client, content);
    m_primary.owe(client, content);
}

void OverduePastes::drop(quint32 client)
{
    const auto kept = m_kept.find(client);
    if (kept == m_kept.end()) {
        return;
    }
    m_ping.forget(kept->second.topLevel);
    m_kept.erase(kept);
    m_clipboard.settleDebt(client);
    m_primary.settleDebt(client);
    if (m_kept.empty() && m_onEmpty) {
        m_onEmpty();
    }
}

void OverduePastes::dropLater(quint32 client, std::chrono::milliseconds delay)
{
    QTimer::singleShot(delay, &m_context, [this, client] { drop(client); });
}

void OverduePastes::handleAnswer(xcb_window_t topLevel)
{
    const auto kept = std::find_if(m_kept.begin(), m_kept.end(),
                                   [topLevel](const auto &entry) { return entry.second.topLevel == topLevel; });
    if (kept != m_kept.end()) {
        // By now it has handled the shortcut. If it did not paste, it must not get this text at a later paste.
        dropLater(kept->first, RestorePolicy::readTime);
    }
}

} // namespace talmo
