#pragma once

#include "Base/SerialExecutor.h"

#include <memory>

namespace talmo {

/// The threads that Talmo works on, besides those that its platform adapters keep to themselves.
struct Executors {
    std::shared_ptr<SerialExecutor> main = SerialExecutor::onCurrentThread();
    std::shared_ptr<SerialExecutor> speech = SerialExecutor::onNewThread(QStringLiteral("talmo-speech"));
    std::shared_ptr<SerialExecutor> decoder = SerialExecutor::onNewThread(QStringLiteral("talmo-decoder"));
    std::shared_ptr<SerialExecutor> cleanup = SerialExecutor::onNewThread(QStringLiteral("talmo-cleanup"));
    std::shared_ptr<SerialExecutor> settings = SerialExecutor::onNewThread(QStringLiteral("talmo-settings"));
};

} // namespace talmo
