#pragma once

#include "Settings/MicrophoneSettings.h"

#include <string>
#include <vector>

namespace talmo::test {

/// Microphones as set by the test; records the calls.
class FakeMicrophoneSettings final : public MicrophoneSettings {
public:
    QList<Choice> all{{QString(), QStringLiteral("System default (Built-in Audio)")},
                      {QStringLiteral("builtin"), QStringLiteral("Built-in Audio")},
                      {QStringLiteral("headset"), QStringLiteral("Jabra Evolve 65")}};
    QString chosen;
    QString wrong;
    bool isThere = true;
    bool isOn = false;
    double loudness = 0;
    int followers = 0;
    std::vector<std::string> calls;

    void change() { Q_EMIT objectWillChange(); }
    void beLoud(double level)
    {
        loudness = level;
        Q_EMIT levelChanged();
    }

    QList<Choice> choices() const override { return all; }
    QString choice() const override { return chosen; }
    void choose(const QString &name) override
    {
        calls.push_back("choose " + name.toStdString());
        publish(chosen, name);
    }
    QString problem() const override { return wrong; }
    bool hasMicrophone() const override { return isThere; }
    void setFollowing(bool isFollowing) override { followers += isFollowing ? 1 : -1; }
    void setListening(bool isListening) override { publish(isOn, isListening); }
    bool isListening() const override { return isOn; }
    double level() const override { return loudness; }
};

} // namespace talmo::test
