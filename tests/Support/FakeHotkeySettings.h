#pragma once

#include "Settings/HotkeySettings.h"

#include <string>
#include <vector>

namespace talmo::test {

/// Keys as set by the test; records the calls.
class FakeHotkeySettings final : public HotkeySettings {
public:
    QList<Key> all{{QStringLiteral("Control_R"), QStringLiteral("Right Ctrl")}};
    QString wrong;
    std::optional<Key> suggested;
    std::optional<Capture> waiting;
    std::vector<std::string> calls;

    void change() { Q_EMIT objectWillChange(); }

    QList<Key> keys() const override { return all; }
    QString problem() const override { return wrong; }
    std::optional<Key> suggestion() const override { return suggested; }
    void beginCapture(Capture capture) override
    {
        calls.emplace_back(capture == Capture::Replace ? "replace" : "add");
        publish(waiting, capture);
    }
    void endCapture() override
    {
        if (waiting) {
            publish(waiting, std::nullopt);
        }
    }
    std::optional<Capture> capture() const override { return waiting; }
    void use(const QString &id) override { calls.push_back("use " + id.toStdString()); }
    void remove(const QString &id) override { calls.push_back("remove " + id.toStdString()); }
};

} // namespace talmo::test
