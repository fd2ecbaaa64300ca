#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>

#include <gmock/gmock.h>

namespace leafwright::test {
namespace {

using testing::HasSubstr;

/// What scripts save by themselves, of which the other jobs of their batch know nothing.
class ScriptsOfABatch : public testing::Test {
protected:
    void SetUp() override {
        for (const auto &[name, title] : {std::pair("a.pdf", "Alpha"), std::pair("b.pdf", "Beta")})
            savePdf(dir, name, 1, {title});
    }
    /// A script that renames the first entry and saves, under a name of the folder if there is one.
    void saveScript(const QString &name = {}) const {
        QJsonArray steps{QJsonObject{{"do", "setTitle"}, {"path", QJsonArray{0}}, {"title", "New"}}};
        if (!name.isEmpty()) steps.append(QJsonObject{{"do", "chooseFile"}, {"path", dir.path(name)}});
        steps.append(QJsonObject{{"do", name.isEmpty() ? "saveDocument:" : "saveDocumentAs:"}});
        saveBytes(dir.path("steps.json"), QJsonDocument(steps).toJson());
    }
    /// @return what came of each file's job
    QMap<QString, QJsonObject> run(const QStringList &options, const QList<QJsonObject> &jobs) const {
        QByteArray lines;
        for (QJsonObject job : jobs) {
            for (const char *name : {"file", "out"})
                if (job.contains(QLatin1String(name)))
                    job[QLatin1String(name)] = dir.path(job[QLatin1String(name)].toString());
            lines += QJsonDocument(job).toJson(QJsonDocument::Compact) + '\n';
        }
        saveBytes(dir.path("jobs"), lines);
        const StandardInput input(dir.path("jobs"));
        const CliResult result =
            runCli(QStringList{"batch"} + options + QStringList{"run", dir.path("steps.json")});
        QMap<QString, QJsonObject> told;
        for (const QByteArray &line : result.out.split('\n')) {
            const QJsonObject object = QJsonDocument::fromJson(line).object();
            if (!line.isEmpty()) told.insert(QFileInfo(object["file"].toString()).fileName(), object);
        }
        return told;
    }
    static std::string messageOf(const QJsonObject &line) { return line["message"].toString().toStdString(); }
    QString titlesOf(const QString &name) const { return plusLinesOf(dir.path(name)); }

    TempDir dir;
    const std::string refusal =
        "could not be written: it is there already; in a batch, a script replaces only its \"out\" or, where "
        "it has none, its own file";
};

TEST_F(ScriptsOfABatch, SaveOverTheirOwnFileWhereThereIsNoOut) {
    saveScript();
    const auto told = run({}, {{{"file", "a.pdf"}}});
    EXPECT_EQ(told["a.pdf"]["status"], "done") << messageOf(told["a.pdf"]);
    EXPECT_EQ(titlesOf("a.pdf"), "+ @1 New\n");
}

TEST_F(ScriptsOfABatch, LeaveTheirOwnFileWhereThereIsAnOut) {
    saveScript();
    const QByteArray before = bytesOf(dir.path("a.pdf"));
    for (const QStringList &options : {QStringList{}, QStringList{"--log", dir.path("log")}}) {
        const auto told = run(options, {{{"file", "a.pdf"}, {"out", "out.pdf"}}});
        EXPECT_EQ(told["a.pdf"]["status"], "failed");
        EXPECT_THAT(messageOf(told["a.pdf"]), HasSubstr("a.pdf " + refusal));
        EXPECT_EQ(bytesOf(dir.path("a.pdf")), before);
        EXPECT_FALSE(QFile::exists(dir.path("out.pdf"))) << "all or nothing";
    }
}

TEST_F(ScriptsOfABatch, ReplaceTheirOut) {
    saveScript("out.pdf");
    for (int i = 0; i < 2; ++i) {
        saveBytes(dir.path("out.pdf"), bytesOf(dir.path("b.pdf")));
        const auto told = run({}, {{{"file", "a.pdf"}, {"out", "out.pdf"}}});
        EXPECT_EQ(told["a.pdf"]["status"], "done") << messageOf(told["a.pdf"]);
        EXPECT_EQ(titlesOf("out.pdf"), "+ @1 New\n");
    }
}

TEST_F(ScriptsOfABatch, ReplaceNoResultOfAnotherJob) {
    saveScript("fixed.pdf");
    savePdf(dir, "b.pdf", 2, {"Beta"});
    for (const char *workers : {"1", "2"}) {
        QFile::remove(dir.path("fixed.pdf"));
        const auto told = run({"--jobs", workers}, {{{"file", "a.pdf"}}, {{"file", "b.pdf"}}});
        QStringList status{told["a.pdf"]["status"].toString(), told["b.pdf"]["status"].toString()};
        status.sort();
        EXPECT_EQ(status.join(' '), "done failed");
        EXPECT_THAT(messageOf(told["a.pdf"]) + messageOf(told["b.pdf"]),
                    HasSubstr("fixed.pdf could not be written"));
        EXPECT_EQ(titlesOf("fixed.pdf"), "+ @1 New\n");
    }
}

TEST_F(ScriptsOfABatch, ReplaceNoFileOfAnotherJob) {
    saveScript("b.pdf");
    const QByteArray before = bytesOf(dir.path("b.pdf"));
    const auto told = run({}, {{{"file", "a.pdf"}}});
    EXPECT_EQ(told["a.pdf"]["status"], "failed");
    EXPECT_THAT(messageOf(told["a.pdf"]), HasSubstr("b.pdf " + refusal));
    EXPECT_EQ(bytesOf(dir.path("b.pdf")), before);
}

TEST_F(ScriptsOfABatch, ReplaceTheirReport) {
    saveScript();
    saveBytes(dir.path("report"), "old");
    const auto told = run({}, {{{"file", "a.pdf"}, {"report", dir.path("report")}}});
    EXPECT_EQ(told["a.pdf"]["status"], "done") << messageOf(told["a.pdf"]);
    EXPECT_EQ(parsedJson(bytesOf(dir.path("report"))).array().size(), 3);
}

TEST_F(ScriptsOfABatch, AloneReplaceWhatTheyAreTold) {
    saveScript("b.pdf");
    const ProgramResult result =
        runProgram(commandLineProgram(), {"run", dir.path("steps.json"), dir.path("a.pdf")});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    EXPECT_EQ(titlesOf("b.pdf"), "+ @1 New\n");
}

}  // namespace
}  // namespace leafwright::test
