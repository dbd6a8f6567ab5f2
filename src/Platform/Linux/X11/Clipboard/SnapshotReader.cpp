#include "Platform/Linux/X11/Clipboard/SnapshotReader.h"

#include <utility>

namespace talmo {

namespace {

using namespace std::chrono_literals;

/// The paste waits for the snapshot, so an owner that sends nothing gets a short timeout; one that is sending gets
/// longer.
constexpr SelectionReader::Timeout snapshotTimeout{500ms, 2000ms};

} // namespace

SnapshotReader::SnapshotReader(XSession &session, SecretLifetime &secret)
    : m_session(session),
      m_secret(secret),
      m_secretOwner(session, secret),
      m_reader(session)
{
}

QCoro::Task<SnapshotReader::Content> SnapshotReader::read(std::shared_ptr<SnapshotReader> self, SelectionServer *server)
{
    if (server->isOwner()) {
        co_return server->content();
    }
    const auto owner = self->m_session.selectionOwner(server->selection());
    const auto reading = co_await self->m_reader.read(server->selection(), snapshotTimeout);
    if (reading.loss != SelectionReading::Loss::None && self->m_onLoss) {
        self->m_onLoss(reading.loss);
    }
    if (server->selection() == self->m_session.connection().atom("CLIPBOARD")) {
        self->m_secret.noteContent(reading.representations);
        self->m_secretOwner.watch(owner);
    }
    co_return reading.representations;
}

QCoro::Task<void> SnapshotReader::handOver()
{
    return m_reader.ask(m_session.connection().atom("CLIPBOARD_MANAGER"), "SAVE_TARGETS", snapshotTimeout);
}

} // namespace talmo
