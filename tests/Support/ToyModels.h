#pragma once

#include "Recognition/Sherpa/SherpaEngine.h"
#include "Support/Printing.h"
#include "Support/SyntheticAudio.h"

#include <QDir>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace talmo::test {

/// What a decoder published.
struct Heard {
    QStringList finals;
    QStringList volatiles;

    QString text() const { return finals.join(QLatin1Char(' ')); }
};

/// Lets a decoder hear the sound in pieces, up to its end.
inline void hearAll(RecordingDecoder &decoder, const Sound &sound)
{
    inPieces(samplesOf(sound), [&decoder](auto piece) { decoder.process(piece); });
}

/// Generated models in a folder for models. Its tests are skipped, with a message, unless TALMO_NEURAL_LIBRARY names
/// the neural engine's library.
class ToyModels : public testing::Test {
protected:
    void SetUp() override
    {
        if (library.isEmpty()) {
            GTEST_SKIP() << "NOT TESTED: TALMO_NEURAL_LIBRARY does not name the neural recogniser's library.";
        }
    }

    /// Runs a script of the tests' Support folder, whose first argument is the folder of the new model.
    void make(const QString &script, const QString &name, const QStringList &arguments = {})
    {
        QProcess maker;
        maker.start(u"/usr/bin/python3"_s,
                    QStringList{u"-B"_s, QStringLiteral(TALMO_TESTS_FOLDER "/Support/") + script, folder(name)} +
                        arguments);
        ASSERT_TRUE(maker.waitForFinished() && maker.exitCode() == 0) << maker.readAllStandardError().constData();
    }
    QString folder(const QString &name) const { return models.filePath(name); }
    std::unique_ptr<SherpaEngine> engine(const QString &name) const
    {
        return std::make_unique<SherpaEngine>(name, SherpaLibrary::open(library), folder(name));
    }
    static Heard hear(SpeechEngine &engine, const Sound &sound, const QString &locale = u"en_US"_s)
    {
        Heard heard;
        const auto decoder = engine.makeDecoderFor(locale, [&heard](const SpeechResult &result) {
            (result.isFinal ? heard.finals : heard.volatiles).append(result.text);
        });
        hearAll(*decoder, sound);
        decoder->finish();
        return heard;
    }

    const QString library = qEnvironmentVariable("TALMO_NEURAL_LIBRARY");
    QTemporaryDir models;
};

} // namespace talmo::test
