#pragma once

#include "Settings/LanguageSettings.h"

#include <string>
#include <vector>

namespace talmo::test {

/// Languages as set by the test; records the calls.
class FakeLanguageSettings final : public LanguageSettings {
public:
    QList<Choice> all{{QString(), QStringLiteral("System language (English)")},
                      {QStringLiteral("en"), QStringLiteral("English")},
                      {QStringLiteral("de"), QStringLiteral("German")}};
    QString chosen;
    QString wrong;
    bool isToBeHad = true;
    std::vector<std::string> calls;

    void change() { Q_EMIT objectWillChange(); }

    QList<Choice> choices() const override { return all; }
    QString choice() const override { return chosen; }
    void choose(const QString &id) override
    {
        calls.push_back("choose " + id.toStdString());
        publish(chosen, id);
    }
    QString problem() const override { return wrong; }
    bool canSetUp() const override { return isToBeHad; }
    void setUp() override { calls.emplace_back("set up"); }
    void useEnglish() override { calls.emplace_back("use English"); }
};

} // namespace talmo::test
