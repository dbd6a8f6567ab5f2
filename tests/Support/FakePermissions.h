#pragma once

#include "Base/Completion.h"
#include "Input/Permissions/AuthorizationSource.h"
#include "Input/Permissions/SettingsPaneOpener.h"

#include <memory>
#include <vector>

namespace talmo::test {

class FakeAuthorization final : public AuthorizationSource {
public:
    int microphone = 3;
    int speech = 3;
    std::shared_ptr<Completion<bool>> microphoneAnswer = Completion<bool>::make();
    std::shared_ptr<Completion<int>> speechAnswer = Completion<int>::make();
    int microphoneStatus() const override { return microphone; }
    int speechRecognitionStatus() const override { return speech; }
    QFuture<bool> requestMicrophoneAccess() override { return microphoneAnswer->future(); }
    QFuture<int> requestSpeechRecognitionAuthorization() override { return speechAnswer->future(); }
};

class FakePaneOpener final : public SettingsPaneOpener {
public:
    std::vector<SettingsPane> opened;
    void open(SettingsPane pane) override { opened.push_back(pane); }
};

} // namespace talmo::test
