#include "Platform/Linux/Wayland/Clipboard/OfferReader.h"

#include "Base/Completion.h"
#include "Base/Log.h"
#include "Platform/Linux/System/FileDescriptor.h"

#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace talmo {

namespace {

/// They control the transfer, or have side effects in the owner, and reach Wayland through the X bridge and GTK.
bool isWorthReading(const QString &type)
{
    static const QStringList excluded = {QStringLiteral("TARGETS"),        QStringLiteral("TIMESTAMP"),
                                         QStringLiteral("MULTIPLE"),       QStringLiteral("SAVE_TARGETS"),
                                         QStringLiteral("DELETE"),         QStringLiteral("INSERT_SELECTION"),
                                         QStringLiteral("INSERT_PROPERTY")};
    return !excluded.contains(type);
}

} // namespace

/// All values of one offer, read at the same time: an owner's answers take a round trip each.
class OfferValues {
public:
    OfferValues(std::chrono::milliseconds pause, std::chrono::milliseconds whole)
    {
        m_pause.setSingleShot(true);
        m_pause.setInterval(pause);
        m_whole.setSingleShot(true);
        m_whole.setInterval(whole);
        for (auto *timer : {&m_pause, &m_whole}) {
            QObject::connect(timer, &QTimer::timeout, timer, [this] { end(OfferReading::Loss::OwnerTooSlow); });
        }
    }

    /// The end to give to the owner.
    FileDescriptor add(const QString &type)
    {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_CLOEXEC) != 0) {
            return {};
        }
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
        const std::size_t index = m_values.size();
        m_values.push_back({type, {}, FileDescriptor(ends[0]), {}, false});
        auto &value = m_values.back();
        value.notifier = std::make_unique<QSocketNotifier>(ends[0], QSocketNotifier::Read);
        QObject::connect(value.notifier.get(), &QSocketNotifier::activated, value.notifier.get(),
                         [this, index] { readValue(index); });
        return FileDescriptor(ends[1]);
    }

    QFuture<void> start()
    {
        m_pause.start();
        m_whole.start();
        endIfDone();
        return m_done->future();
    }

    OfferReading take()
    {
        OfferReading reading;
        reading.loss = m_loss;
        for (auto &value : m_values) {
            if (value.isComplete) {
                reading.representations.append({value.type, std::move(value.data), value.type, 8});
            } else {
                generalLog().error("a value on the clipboard could not be saved: %@ (%d bytes arrived)",
                                   {value.type, value.data.size()});
            }
        }
        return reading;
    }

private:
    struct Value {
        QString type;
        QByteArray data;
        FileDescriptor pipe;
        std::unique_ptr<QSocketNotifier> notifier;
        bool isComplete;
    };

    void readValue(std::size_t index)
    {
        auto &value = m_values[index];
        const auto count = ::read(value.pipe.get(), m_buffer->data(), m_buffer->size());
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
            return;
        }
        if (count > 0) {
            m_size += count;
            value.data.append(m_buffer->data(), count);
            m_pause.start();
            if (m_size > OfferReader::maximumSize) {
                end(OfferReading::Loss::TooLarge);
            }
            return;
        }
        value.isComplete = count == 0;
        value.notifier->setEnabled(false);
        endIfDone();
    }

    void endIfDone()
    {
        if (std::none_of(m_values.cbegin(), m_values.cend(),
                         [](const Value &value) { return value.notifier->isEnabled(); })) {
            end(OfferReading::Loss::None);
        }
    }

    void end(OfferReading::Loss loss)
    {
        if (m_done->isDone()) {
            return;
        }
        m_loss = loss;
        m_pause.stop();
        m_whole.stop();
        for (auto &value : m_values) {
            value.notifier->setEnabled(false);
        }
        m_done->finish();
    }

    std::vector<Value> m_values;
    /// On the heap: the stack of every thread in the process would begin with one that is thread-local.
    std::unique_ptr<std::array<char, std::size_t(1) << 18>> m_buffer =
        std::make_unique_for_overwrite<std::array<char, std::size_t(1) << 18>>();
    qsizetype m_size = 0;
    OfferReading::Loss m_loss = OfferReading::Loss::None;
    QTimer m_pause;
    QTimer m_whole;
    std::shared_ptr<Completion<void>> m_done = Completion<void>::make();
};

QCoro::Task<OfferReading> OfferReader::read(WaylandSelection selection, std::chrono::milliseconds pause,
                                            std::chrono::milliseconds whole)
{
    const auto values = std::make_shared<OfferValues>(pause, whole);
    bool isTruncated = false;
    if (const auto *offer = m_control.offer(selection)) {
        const auto worthReading = [](const QString &type) { return isWorthReading(type); };
        QStringList types;
        std::copy_if(offer->types.cbegin(), offer->types.cend(), std::back_inserter(types), worthReading);
        isTruncated = types.size() > maximumCount;
        for (const auto &type : types.mid(0, maximumCount)) {
            const auto end = values->add(type);
            zwlr_data_control_offer_v1_receive(offer->proxy, type.toUtf8().constData(), end.get());
            m_control.session().flush(); // Descriptors that wait to be sent are limited.
        }
    }
    const auto done = values->start();
    co_await done;
    auto reading = values->take();
    if (isTruncated && reading.loss == OfferReading::Loss::None) {
        reading.loss = OfferReading::Loss::TooLarge;
    }
    co_return reading;
}

} // namespace talmo
