#include "support/CliFiles.h"

#include "support/BookPdf.h"
#include "support/CliRun.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

namespace leafwright::test {

QByteArray bytesOf(const QString &path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << qPrintable(path);
    return file.readAll();
}

void saveBytes(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(path);
    EXPECT_EQ(file.write(bytes), bytes.size());
}

QJsonDocument parsedJson(const QByteArray &text) {
    QJsonParseError error{};
    QJsonDocument document = QJsonDocument::fromJson(text, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError)
        << qPrintable(error.errorString()) << " in " << text.left(200).constData();
    return document;
}

namespace {

QJsonArray withoutWhatElse(const QJsonArray &nodes) {
    QJsonArray plain;
    for (const QJsonValue &value : nodes) {
        QJsonObject node = value.toObject();
        for (const char *key : {"bold", "italic", "color", "open", "action", "entry"})
            node.remove(QLatin1String(key));
        node["children"] = withoutWhatElse(node["children"].toArray());
        plain.append(node);
    }
    return plain;
}

}  // namespace

QJsonArray outlineOf(const QString &path) {
    const CliResult result = runCli({"outline", path});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    return withoutWhatElse(parsedJson(result.out).array());
}

QString plusLinesOf(const QString &path) {
    const CliResult result = runCli({"outline", path, "--format", "plus"});
    EXPECT_EQ(result.exitCode, 0) << result.err.constData();
    return QString::fromUtf8(result.out);
}

QString savePdf(const TempDir &dir, const QString &name, int pages, const std::vector<std::string> &titles) {
    PdfBuilder pdf;
    pdf.addNumberedPages(pages);
    std::vector<OutlineEntry> entries;
    for (const std::string &title : titles) {
        const int page = static_cast<int>(entries.size());
        entries.push_back({"(" + title + ")", "[" + pdf.pageReference(page) + " /XYZ 72 700 null]"});
    }
    if (!entries.empty()) addOutline(pdf, entries);
    pdf.save(dir.path(name));
    return dir.path(name);
}

namespace {

QString savePdfWithPasswords(const QString &path, const std::string &user, const std::string &owner) {
    PdfBuilder pdf;
    pdf.addNumberedPages(2);
    addOutline(pdf, {{"(Intro)", ""}});
    PdfBuilder::Options options;
    options.version = "1.7";
    options.userPassword = user;
    options.ownerPassword = owner;
    pdf.save(path, options);
    return path;
}

}  // namespace

QString saveLockedPdf(const TempDir &dir, const QString &name) {
    return savePdfWithPasswords(dir.path(name), "secret", "secret");
}

QString saveEncryptedPdf(const TempDir &dir, const QString &name) {
    return savePdfWithPasswords(dir.path(name), "", "secret");
}

QString savePdfWithHeadings(const TempDir &dir, const QString &name) {
    const std::string body = PdfBuilder::showText("F1", 10, 72, 300,
                                                  "The body text of this document is set in a small font "
                                                  "and there is more of it than of anything else.");
    PdfBuilder pdf;
    pdf.addPage(PdfBuilder::showText("F2", 18, 72, 700, "Chapter One") +
                PdfBuilder::showText("F2", 14, 72, 600, "Section Alpha") +
                PdfBuilder::showText("F3", 12, 72, 500, "Detail Below") + body);
    pdf.addPage(PdfBuilder::showText("F2", 18, 72, 700, "Chapter Two") +
                PdfBuilder::showText("F2", 14, 72, 600, "Section Beta") + body);
    addOutline(pdf, {{"(Old Entry)", "[" + pdf.pageReference(1) + " /XYZ 10 20 null]"}});
    pdf.save(dir.path(name));
    return dir.path(name);
}

QString savePdfWithContents(const TempDir &dir, const QString &name, const std::string &pageLabels) {
    makeBook(pageLabels).save(dir.path(name));
    return dir.path(name);
}

StandardInput::StandardInput(const QString &path) : saved_(::dup(STDIN_FILENO)) {
    const int file = ::open(QFile::encodeName(path).constData(), O_RDONLY);
    EXPECT_GE(file, 0);
    std::fflush(stdin);
    ::dup2(file, STDIN_FILENO);
    ::close(file);
    std::clearerr(stdin);
}

StandardInput::~StandardInput() {
    ::dup2(saved_, STDIN_FILENO);
    ::close(saved_);
    std::clearerr(stdin);
}

FileSizeLimit::FileSizeLimit(unsigned long bytes) {
    savedHandler_ = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    saved_ = limit.rlim_cur;
    limit.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
}

FileSizeLimit::~FileSizeLimit() {
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    limit.rlim_cur = saved_;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, savedHandler_);
}

}  // namespace leafwright::test
