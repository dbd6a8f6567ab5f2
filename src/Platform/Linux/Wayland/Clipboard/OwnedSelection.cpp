#include "Platform/Linux/Wayland/Clipboard/OwnedSelection.h"

#include "Platform/Linux/Session/ClipboardHints.h"

#include <algorithm>
#include <utility>

namespace talmo {

namespace {

bool isHint(const QString &type)
{
    const auto hints = historyHints();
    return std::any_of(hints.cbegin(), hints.cend(), [&type](const auto &hint) { return hint.type == type; });
}

} // namespace

OwnedSelection::OwnedSelection(DataControl &control, WaylandSelection selection)
    : m_control(control),
      m_selection(selection)
{
}

OwnedSelection::~OwnedSelection()
{
    if (m_source != nullptr) {
        m_replaced.push_back(m_source);
    }
    for (auto *source : m_replaced) {
        zwlr_data_control_source_v1_destroy(source);
    }
    m_control.session().flush();
}

void OwnedSelection::own(Content content)
{
    static constexpr zwlr_data_control_source_v1_listener listener = {
        [](void *self, zwlr_data_control_source_v1 *source, const char *type, int32_t pipe) {
            static_cast<OwnedSelection *>(self)->send(source, QString::fromUtf8(type), FileDescriptor(pipe));
        },
        [](void *self, zwlr_data_control_source_v1 *source) {
            static_cast<OwnedSelection *>(self)->handleCancelled(source);
        }};
    if (!m_control.isUsable()) {
        return;
    }
    auto *source = m_control.createSource();
    zwlr_data_control_source_v1_add_listener(source, &listener, this);
    for (const auto &representation : content) {
        zwlr_data_control_source_v1_offer(source, representation.type.toUtf8().constData());
    }
    if (m_source != nullptr) {
        m_replaced.push_back(m_source);
    }
    m_source = source;
    m_content = std::move(content);
    m_control.setSelection(m_selection, source);
}

void OwnedSelection::disown()
{
    if (auto *source = std::exchange(m_source, nullptr)) {
        m_control.setSelection(m_selection, nullptr);
        zwlr_data_control_source_v1_destroy(source);
        m_control.session().flush();
    }
    m_content.clear();
}

void OwnedSelection::handleCancelled(zwlr_data_control_source_v1 *source)
{
    zwlr_data_control_source_v1_destroy(source);
    m_replaced.remove(source);
    if (source == m_source) {
        m_source = nullptr;
        m_content.clear();
        if (m_onLost) {
            m_onLost();
        }
    }
}

/// The value is copied: a program that is still reading gets what it asked for, whatever follows it.
void OwnedSelection::send(zwlr_data_control_source_v1 *source, const QString &type, FileDescriptor pipe)
{
    const auto found = std::find_if(m_content.cbegin(), m_content.cend(),
                                    [&type](const auto &representation) { return representation.type == type; });
    if (source != m_source || found == m_content.cend()) {
        return; // The reader sees an empty value.
    }
    const Read read{std::chrono::steady_clock::now(), !isHint(type)};
    m_transfers.push_back(nullptr);
    const auto place = std::prev(m_transfers.end());
    *place = std::make_unique<PipeWriter>(std::move(pipe), found->data, [this, place, read](bool isComplete) {
        // Later: it is the writer's own function that is running.
        QMetaObject::invokeMethod(
            &m_context,
            [this, place, read, isComplete] {
                m_transfers.erase(place);
                if (m_onRead) {
                    m_onRead({read.time, read.hasText && isComplete});
                }
            },
            Qt::QueuedConnection);
    });
    (*place)->start();
}

} // namespace talmo
