#include "Recognition/Sherpa/SherpaRecogniser.h"

#include "Recognition/Sherpa/OfflineRecogniser.h"
#include "Recognition/Sherpa/StreamingRecogniser.h"

#include <QThread>

#include <algorithm>
#include <utility>

namespace talmo {

std::shared_ptr<SherpaRecogniser> SherpaRecogniser::load(std::shared_ptr<SherpaLibrary> library,
                                                         const SherpaModel &model)
{
    if (model.isStreaming()) {
        return std::make_shared<StreamingRecogniser>(std::move(library), model);
    }
    return std::make_shared<OfflineRecogniser>(std::move(library), model);
}

int sherpaThreadCount()
{
    constexpr int most = 4;
    return std::clamp(QThread::idealThreadCount() / 2, 1, most);
}

} // namespace talmo
