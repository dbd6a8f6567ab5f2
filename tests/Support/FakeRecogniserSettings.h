#pragma once

#include "Settings/RecogniserSettings.h"

#include <string>
#include <vector>

namespace talmo::test {

/// Recognisers and models as set by the test; records the calls.
class FakeRecogniserSettings final : public RecogniserSettings {
public:
    QList<Choice> allChoices{{QStringLiteral("automatic"), QStringLiteral("Automatic (best installed)")},
                             {QStringLiteral("embedded"), QStringLiteral("Built in (PocketSphinx, English)")}};
    QString chosen = QStringLiteral("automatic");
    /// Empty while no offline model is installed.
    QList<Choice> allLiveChoices;
    QString chosenLive = QStringLiteral("automatic");
    QString wrongChoice;
    QList<Model> allModels{{QStringLiteral("zipformer-en"), QStringLiteral("English: Zipformer 2023-06-26"),
                            QStringLiteral("Favours the words in your dictionary. No punctuation. About 310 MB."),
                            QStringLiteral("Apache-2.0"), QUrl(QStringLiteral("https://example.org/licence")), false},
                           {QStringLiteral("kroko-de"),
                            QStringLiteral("German: Kroko"),
                            QStringLiteral("German."),
                            QStringLiteral("CC-BY-SA"),
                            {},
                            true}};
    QString wrongLibrary;
    QString wrongInstallation;
    std::optional<Installation> underWay;
    std::optional<Offer> offered;
    std::vector<std::string> calls;

    void change() { Q_EMIT objectWillChange(); }

    QList<Choice> choices() const override { return allChoices; }
    QString choice() const override { return chosen; }
    void choose(const QString &id) override
    {
        calls.push_back("choose " + id.toStdString());
        publish(chosen, id);
    }
    QList<Choice> liveChoices() const override { return allLiveChoices; }
    QString liveChoice() const override { return chosenLive; }
    void chooseLive(const QString &id) override
    {
        calls.push_back("choose live " + id.toStdString());
        publish(chosenLive, id);
    }
    QString choiceProblem() const override { return wrongChoice; }
    QList<Model> models() const override { return allModels; }
    QString obstacle() const override { return wrongLibrary; }
    std::optional<Installation> installation() const override { return underWay; }
    QString problem() const override { return wrongInstallation; }
    std::optional<Offer> offer() const override { return underWay ? std::nullopt : offered; }
    void acceptOffer() override { calls.emplace_back("accept offer"); }
    void languageChanged() override { change(); }
    void install(const QString &modelId) override { calls.push_back("install " + modelId.toStdString()); }
    void cancelInstallation() override { calls.emplace_back("cancel"); }
    void remove(const QString &modelId) override { calls.push_back("remove " + modelId.toStdString()); }
};

} // namespace talmo::test
