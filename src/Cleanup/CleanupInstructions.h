#pragma once

#include "App/Services/PipelineServices.h"

#include <QString>
#include <QStringList>

namespace talmo {

/// What the language model is told before it sees a transcript: to edit it, and never to answer it.
QString buildInstructions(const QStringList &dictionaryWords, bool isBulletList, bool concise, TextTone tone);

/// A transcript as the model is given it.
QString transcriptPrompt(const QString &text);

} // namespace talmo
