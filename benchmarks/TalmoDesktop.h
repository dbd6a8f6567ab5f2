#pragma once

#include "ChildProcess.h"
#include "Figures.h"
#include "SoundServer.h"
#include "VirtualDesktop.h"
#include "VirtualKeyboard.h"

#include <QString>

#include <memory>

namespace talmo::benchmarks {

/// Talmo on a desktop of its own, with a window to dictate into.
class TalmoDesktop {
public:
    static constexpr testbed::Timeout timeout = std::chrono::seconds(60);
    static constexpr quint32 key = testbed::VirtualKeyboard::controlRight;

    /// `programs`: the folder of the talmo and talmoctl to measure; those of the benchmark itself if empty.
    explicit TalmoDesktop(const QString &programs);

    /// Each returns when it happened. Throws Error if it does not.
    Time talmoSays(const QString &text, std::size_t from = 0);
    Time windowShows(const QString &text, std::size_t from = 0);

    /// Returns the time from the start until Talmo answers to its key.
    std::pair<Time, Time> startTalmo();
    void openWindow();
    /// What talmoctl prints; empty if it fails.
    QString talmoctl(const QStringList &arguments, const QString &input = {});
    /// Kilobytes.
    double residentSize() const;
    /// The part of it that is in no other process.
    double privateSize() const;
    /// How often any thread of Talmo was given a processor, since it was started.
    double switches() const;

    testbed::VirtualDesktop desktop;
    QProcessEnvironment environment = desktop.environment();
    testbed::SoundServer sound{desktop.folder() + QStringLiteral("/sound"), environment};
    testbed::VirtualKeyboard keyboard;
    std::unique_ptr<testbed::ChildProcess> window;
    std::unique_ptr<testbed::ChildProcess> talmo;

private:
    QString m_programs;
    int m_windows = 0;
};

} // namespace talmo::benchmarks
