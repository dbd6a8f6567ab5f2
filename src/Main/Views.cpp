#include "Main/Views.h"

#include "LanguageModel/SmallerModel.h"
#include "Main/FirstTimeNotices.h"
#include "Platform/Linux/Session/DesktopSettingsOpener.h"

namespace talmo {

namespace {

EditingServer editingServer(const LoopbackLanguageModel::Server &server, const EditingPace &pace)
{
    EditingServer shown{server.model, server.place, server.refused};
    if (pace.isSlow(server.model)) {
        const auto slow = std::chrono::duration_cast<std::chrono::seconds>(EditingPace::slowEdit);
        const auto faster = smallerModel(server.model).value_or(RecommendedModel());
        shown.slowness =
            EditingServer::Slowness{static_cast<int>(slow.count()), faster.name, faster.megabytes, faster.licence};
    }
    return shown;
}

void addServices(ViewContext &context, const Services &services)
{
    context.permissions = services.permissions;
    context.unavailabilityMessage = [cleanup = services.cleanup] { return cleanup->unavailabilityMessage(); };
    context.recovery = services.recovery;
    context.history = services.history;
    context.pause = services.pause;
    context.beginRecording = [gestures = services.gestures] { gestures->beginGesture(); };
    context.endRecording = services.endGesture;
}

void addModels(ViewContext &context, const SettingsModels &models)
{
    context.recogniser = models.recogniser;
    context.language = models.language;
    context.pronunciations = models.pronunciations;
    context.microphone = models.microphone;
    context.hotkeys = models.hotkeys;
}

void addDesktop(ViewContext &context, const Desktop &desktop)
{
    context.desktopExtension = desktop.extension;
    context.desktopKey = desktop.desktopKey;
    context.pastePermission = desktop.pastePermission;
    for (const auto &limit : desktop.limits) {
        context.limits.append(FirstTimeNotices::describe(limit));
    }
    context.canOpenSettings = &DesktopSettingsOpener::canOpen;
}

} // namespace

std::unique_ptr<UserInterface> makeViews(const ViewParts &parts, const SettingsModels &models,
                                         TalmoCoordinator &coordinator)
{
    ViewContext context;
    context.coordinator = &coordinator;
    context.settings = TalmoSettings::shared();
    context.passwordFields = parts.passwordFields;
    context.options = parts.options;
    context.refreshAvailability = [model = parts.languageModel] { return model->refresh(); };
    context.editingServer = [model = parts.languageModel, pace = parts.services->editingPace] {
        return editingServer(model->server(), *pace);
    };
    addServices(context, *parts.services);
    addModels(context, models);
    addDesktop(context, *parts.desktop);
    const auto &desktop = *parts.desktop;
    return std::make_unique<UserInterface>(context, UserInterfaceParts{desktop.statusItem, desktop.makePanelWindow,
                                                                       desktop.screens, desktop.focus, desktop.shell});
}

} // namespace talmo
