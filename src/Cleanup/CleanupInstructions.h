#pragma once

#include "App/Services/PipelineServices.h"

#include <QString>
#include <QStringList>

namespace talmo {

/// The language model's instructions: to edit the transcript, and never to answer it.
QString buildInstructions(const QStringList &dictionaryWords, bool isBulletList, bool concise, TextTone tone);

/// What every prompt begins with.
QString promptStart();

/// The prompt for a transcript.
QString transcriptPrompt(const QString &text);

} // namespace talmo
