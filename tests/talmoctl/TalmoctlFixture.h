#pragma once

#include "Support/Printing.h"
#include "Support/ProgramRun.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace talmo::test {

/// talmoctl as a user runs it, with settings of its own.
class TalmoctlFixture : public testing::Test {
protected:
    using Result = ProgramRun::Result;

    const QString program = QStringLiteral(TALMO_BIN "/talmoctl");
    QTemporaryDir folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();

    TalmoctlFixture()
    {
        environment.insert(u"XDG_CONFIG_HOME"_s, folder.path());
        environment.insert(u"XDG_DATA_HOME"_s, folder.filePath(u"data"_s));
        environment.insert(u"XDG_RUNTIME_DIR"_s, folder.path());
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        storeSettings({{u"linux.languageModelAddress"_s, u"off"_s}});
    }
    void storeSettings(const QJsonObject &settings) const
    {
        QDir(folder.path()).mkpath(u"talmo"_s);
        QFile file(folder.filePath(u"talmo/settings.json"_s));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(QJsonDocument(settings).toJson());
    }
    void storeCatalogue(const QJsonObject &entry) const
    {
        QFile file(folder.filePath(u"talmo/models.json"_s));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(QJsonDocument(QJsonObject{{u"models"_s, QJsonArray{entry}}}).toJson());
    }
    Result run(const QString &command, const QStringList &arguments, const QByteArray &input = {}) const
    {
        ProgramRun running(environment, command, arguments);
        running.type(input);
        running.endInput();
        return running.result();
    }
    Result talmoctl(const QStringList &arguments, const QByteArray &input = {}) const
    {
        return run(program, arguments, input);
    }
    Result shell(const QString &script) const
    {
        return run(u"bash"_s, {u"-c"_s, u"talmoctl() { '%1' \"$@\"; }; "_s.arg(program) + script});
    }
    /// Succeeded with exactly this output.
    static void expectOutput(const Result &result, const std::string &output)
    {
        EXPECT_EQ(result.status, 0) << result.errors;
        EXPECT_EQ(result.output, output);
        EXPECT_EQ(result.errors, "");
    }
    static void expectUsageError(const Result &result, const std::string &problem)
    {
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_THAT(result.errors, testing::AllOf(testing::HasSubstr(problem), testing::HasSubstr("--help")));
    }
    static QString contentOf(const QString &path)
    {
        QFile file(path);
        EXPECT_TRUE(file.open(QFile::ReadOnly)) << path.toStdString();
        return QString::fromUtf8(file.readAll());
    }
    /// The long options listed in a command's help.
    QStringList optionsOf(const QString &command) const
    {
        static const QRegularExpression word(u"--[a-z-]+"_s);
        QStringList found;
        auto matches =
            word.globalMatch(QString::fromStdString(talmoctl(command.split(u' ') + QStringList{u"--help"_s}).output));
        while (matches.hasNext()) {
            found.append(matches.next().captured());
        }
        return found;
    }
};

} // namespace talmo::test
