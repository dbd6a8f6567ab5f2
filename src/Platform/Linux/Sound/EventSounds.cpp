#include "Platform/Linux/Sound/EventSounds.h"

#include "Base/Application.h"
#include "Base/Log.h"

#include <canberra.h>

namespace talmo {

namespace {

/// Names of the freedesktop sound theme: a rising and a falling pair, and the sound of an error.
const char *eventOf(SoundCue cue)
{
    switch (cue) {
    case SoundCue::Start:
        return "device-added";
    case SoundCue::Stop:
        return "device-removed";
    case SoundCue::Error:
        break;
    }
    return "dialog-error";
}

} // namespace

class EventSounds::Player {
public:
    Player() = default;
    ~Player()
    {
        if (m_context != nullptr) {
            ca_context_destroy(m_context);
        }
    }
    Player(const Player &) = delete;
    Player &operator=(const Player &) = delete;

    void play(const char *event)
    {
        int status = m_context != nullptr ? CA_SUCCESS : open();
        if (status == CA_SUCCESS) {
            status = ca_context_play(m_context, 0, CA_PROP_EVENT_ID, event, CA_PROP_MEDIA_ROLE, "event",
                                     CA_PROP_CANBERRA_CACHE_CONTROL, "permanent", nullptr);
        }
        if (status != CA_SUCCESS) {
            generalLog().info("the sound %s could not be played: %s",
                              {QString::fromLatin1(event), QString::fromUtf8(ca_strerror(status))});
        }
    }

private:
    int open()
    {
        int status = ca_context_create(&m_context);
        if (status != CA_SUCCESS) {
            m_context = nullptr;
            return status;
        }
        const QByteArray identifier = bundleIdentifier().toUtf8();
        status = ca_context_change_props(m_context, CA_PROP_APPLICATION_NAME, "Talmo", CA_PROP_APPLICATION_ID,
                                         identifier.constData(), nullptr);
        return status;
    }

    ca_context *m_context = nullptr;
};

EventSounds::EventSounds() = default;

EventSounds::~EventSounds()
{
    if (m_executor) {
        m_executor->post([player = std::move(m_player)]() mutable { player.reset(); });
    }
}

void EventSounds::play(SoundCue cue)
{
    if (!m_executor) {
        m_executor = SerialExecutor::onNewThread(QStringLiteral("talmo-sounds"));
        m_player = std::make_shared<Player>();
    }
    m_executor->post([player = m_player, cue] { player->play(eventOf(cue)); });
}

} // namespace talmo
