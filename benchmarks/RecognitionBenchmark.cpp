#include "Benchmarks.h"
#include "EmbeddedRecogniser.h"
#include "SpokenText.h"

#include <QTemporaryDir>

namespace talmo::benchmarks {

void measureRecognition(Figures &figures, int rounds)
{
    EmbeddedRecogniser recogniser;
    const QTemporaryDir folder;
    const QString sentence = QStringLiteral("thank you very much we will meet again on monday ");
    const QString shortest = QStringLiteral("last audio -> final text, embedded, 3 s");
    for (const int seconds : {3, 10, 30}) {
        const QString file = testbed::speak(sentence.repeated(seconds / 3), folder.path());
        for (int round = 0; round < rounds; ++round) {
            figures
                .row(QStringLiteral("last audio -> final text, embedded, %1 s").arg(seconds), QStringLiteral("ms"),
                     seconds == 3 ? QString() : shortest)
                .add(recogniser.finishing(file));
        }
    }
}

} // namespace talmo::benchmarks
