#include "Recognition/InstalledModels.h"

#include "Base/DetailedError.h"
#include "Base/Log.h"
#include "Recognition/ModelCheck.h"
#include "Recognition/Models/ModelStore.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>

namespace talmo {

namespace InstalledModels {

namespace {

InstalledModel examine(const Configuration &configuration, InstalledModel model)
{
    const QString folder = ModelStore(configuration.folder).path(model.name);
    try {
        auto engine = configuration.factories.forModel(folder).make(model.name, folder);
        configuration.check(*engine, folder);
        generalLog().info("speech engine: %@", {engine->description()});
        model.engine = std::move(engine);
        const auto report = ModelReport::noted(folder);
        model.isSlow = report && report->shareOfSpeech > largestShareOfSpeech;
    } catch (const Error &error) {
        model.problem = error.localizedDescription();
        generalLog().error("the speech model %@ is not used: %@", {model.name, wholeDescription(error)});
    }
    return model;
}

} // namespace

std::vector<InstalledModel> look(const Configuration &configuration, const std::vector<InstalledModel> &known)
{
    std::vector<InstalledModel> models;
    const ModelStore store(configuration.folder);
    for (const auto &name : store.installed()) {
        InstalledModel model;
        model.name = name;
        model.changed = QFileInfo(store.path(name)).lastModified().toMSecsSinceEpoch();
        const auto before = std::find_if(known.begin(), known.end(), [&model](const InstalledModel &each) {
            return each.name == model.name && each.changed == model.changed && each.engine;
        });
        models.push_back(before != known.end() ? *before : examine(configuration, model));
    }
    return models;
}

} // namespace InstalledModels

} // namespace talmo
