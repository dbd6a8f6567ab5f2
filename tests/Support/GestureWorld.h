#pragma once

#include "App/DeferringHotkeyService.h"
#include "App/PressPreparation.h"
#include "Input/Hotkey/GlobalHotkeyManager.h"
#include "Support/FakeEventMonitor.h"
#include "Support/Printing.h"
#include "Support/RecordingWorld.h"

#include <algorithm>

namespace talmo::test {

/// The real path from the key to the coordinator, in virtual time, between fakes that record their calls.
class GestureWorld {
public:
    class Preroll final : public SpeechPreroll {
    public:
        explicit Preroll(RecordingWorld::Calls &calls)
            : m_calls(calls)
        {
        }
        void begin() override { m_calls.emplace_back("preroll.begin"); }
        void pause() override { m_calls.emplace_back("preroll.pause"); }
        void resume() override { m_calls.emplace_back("preroll.resume"); }
        void discard() override { m_calls.emplace_back("preroll.discard"); }
        void close() override { m_calls.emplace_back("preroll.close"); }

    private:
        RecordingWorld::Calls &m_calls;
    };

    GestureWorld()
        : world([this](CoordinatorParts &parts) {
              cleanup = std::make_shared<InterruptibleCleanupService>(parts.textCleanupService);
              parts.textCleanupService = cleanup;
          })
    {
        preroll = std::make_shared<Preroll>(world.calls);
        const auto executor = SerialExecutor::onCurrentThread();
        manager = std::make_shared<GlobalHotkeyManager>(keys, trust, world.clock, executor);
        gestures = std::make_shared<DeferringHotkeyService>(
            DeferringHotkeyService::Parts{manager, preroll, cleanup, notice, world.clock});
        preparation = std::make_unique<PressPreparation>(PressPreparation::Parts{
            keys, gestures, preroll, world.clock, [this] { world.calls.emplace_back("warmUp"); }});
        gestures->follow(*world.coordinator);
        gestures->setOnHotkeyDown([this] { world.coordinator->beginDictation(); });
        gestures->setOnHotkeyUp([this] { world.coordinator->endDictation(); });
        preparation->start();
        gestures->start();
        world.onCleanup = [this] {
            const bool isEdit = world.calls.back().find("\" ai") != std::string::npos;
            return isEdit ? edit->future() : makeReadyFuture(u"Local."_s);
        };
        world.onInsert = [this] { return insertion->future(); };
    }

    /// Lets everything still waiting end while what it uses exists.
    ~GestureWorld()
    {
        insertion->finish();
        edit->finish(QString());
        pass(std::chrono::seconds(10));
    }
    GestureWorld(const GestureWorld &) = delete;
    GestureWorld &operator=(const GestureWorld &) = delete;

    void press()
    {
        keys->press();
        settle();
    }
    void release()
    {
        keys->release();
        settle();
    }
    void pass(Duration time) { world.clock->advance(time); }
    void hold()
    {
        press();
        pass(FnGestureRecognizer::holdThreshold);
    }
    void doubleTap()
    {
        constexpr Duration step = std::chrono::milliseconds(40);
        press();
        pass(step);
        release();
        pass(step);
        press();
        pass(step);
        release();
    }
    /// Waits long enough that the next press is not a double tap.
    void pause() { pass(std::chrono::milliseconds(400)); }
    /// Dictates a sentence up to the start of its edit by the model.
    void beEditing()
    {
        hold();
        release();
        pause();
    }
    /// Dictates a sentence up to the start of its insertion.
    void beInserting()
    {
        beEditing();
        std::exchange(edit, Completion<QString>::make())->finish(u"Edited."_s);
        settle();
    }
    void endInsertion()
    {
        std::exchange(insertion, Completion<void>::make())->finish();
        settle();
    }

    TalmoState state() const { return world.coordinator->state(); }
    long count(const std::string &call) const { return std::count(world.calls.begin(), world.calls.end(), call); }

    std::shared_ptr<FakeEventMonitor> keys = std::make_shared<FakeEventMonitor>();
    std::shared_ptr<FakeInputTrust> trust = std::make_shared<FakeInputTrust>();
    std::shared_ptr<DictationNotice> notice = std::make_shared<DictationNotice>();
    /// The pending answers of the language model and of the insertion.
    std::shared_ptr<Completion<QString>> edit = Completion<QString>::make();
    std::shared_ptr<Completion<void>> insertion = Completion<void>::make();
    std::shared_ptr<InterruptibleCleanupService> cleanup;
    RecordingWorld world;
    std::shared_ptr<Preroll> preroll;
    std::shared_ptr<GlobalHotkeyManager> manager;
    std::shared_ptr<DeferringHotkeyService> gestures;
    std::unique_ptr<PressPreparation> preparation;
};

} // namespace talmo::test
