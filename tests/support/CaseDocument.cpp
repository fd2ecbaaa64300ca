#include "support/CaseDocument.h"

#include "support/CliFiles.h"
#include "support/CliRun.h"
#include "support/Paths.h"
#include "support/PdfBuilder.h"

#include <QJsonArray>

#include <gtest/gtest.h>

namespace leafwright::test {

namespace {

std::string hexString(const QString &text) {
    QByteArray bytes("\xFE\xFF");
    for (const QChar unit : text) {
        bytes += static_cast<char>(unit.row());
        bytes += static_cast<char>(unit.cell());
    }
    return "<" + bytes.toHex().toStdString() + ">";
}

void addPages(PdfBuilder &pdf, const QJsonValue &pages) {
    if (pages.isDouble()) return pdf.addNumberedPages(pages.toInt());
    for (const QJsonValue page : pages.toArray()) {
        std::string content;
        const QJsonArray pieces = page.isArray() ? page.toArray() : page["text"].toArray();
        for (const QJsonValue piece : pieces)
            content += PdfBuilder::showText(piece[0].toString().toStdString(), piece[1].toDouble(),
                                            piece[2].toDouble(), piece[3].toDouble(),
                                            piece[4].toString().toStdString());
        pdf.addPage(content, page["entries"].toString().toStdString());
    }
}

std::string destinationOf(const PdfBuilder &pdf, const QJsonValue &entry) {
    if (!entry["page"].isDouble()) return {};
    const std::string page = pdf.pageReference(entry["page"].toInt() - 1);
    if (!entry["point"].isArray()) return "[" + page + " /Fit]";
    return "[" + page + " /XYZ " + std::to_string(entry["point"][0].toDouble()) + " " +
           std::to_string(entry["point"][1].toDouble()) + " null]";
}

std::vector<OutlineEntry> entriesOf(const PdfBuilder &pdf, const QJsonArray &nodes) {
    std::vector<OutlineEntry> entries;
    for (const QJsonValue node : nodes)
        entries.push_back({hexString(node["title"].toString()), destinationOf(pdf, node),
                           entriesOf(pdf, node["children"].toArray())});
    return entries;
}

/// Reads "a (b c) d" up to the end or a closing parenthesis.
QJsonArray nodesOf(QStringList &words) {
    QJsonArray nodes;
    while (!words.isEmpty()) {
        const QString word = words.takeFirst();
        if (word == ")") return nodes;
        if (word == "(") {
            QJsonObject last = nodes.takeAt(nodes.size() - 1).toObject();
            last["children"] = nodesOf(words);
            nodes.append(last);
        } else {
            nodes.append(QJsonObject{{"title", word}, {"page", 1}, {"point", QJsonArray{72, 700}}});
        }
    }
    return nodes;
}

QJsonArray outlineOf(const QJsonValue &outline) {
    if (!outline.isString()) return outline.toArray();
    QStringList words =
        outline.toString().replace("(", " ( ").replace(")", " ) ").split(' ', Qt::SkipEmptyParts);
    return nodesOf(words);
}

/// The description with what it has in common with others.
QJsonObject withSharedMembers(const QJsonObject &given) {
    QJsonObject members;
    if (given.contains("like"))
        members = parsedJson(bytesOf(projectPath("tests/documents/" + given["like"].toString() + ".json")))
                      .object();
    for (auto member = given.begin(); member != given.end(); ++member)
        members[member.key()] = member.value();
    const QStringList known{"like",    "pages",        "outline",       "labels",
                            "version", "userPassword", "ownerPassword", "files"};
    for (const QString &member : members.keys())
        EXPECT_TRUE(known.contains(member)) << "a document has no \"" << qPrintable(member) << '"';
    EXPECT_TRUE(members.contains("pages")) << "a document has \"pages\"";
    return members;
}

}  // namespace

void saveCaseDocument(const QJsonObject &given, const QString &path) {
    const QJsonObject description = withSharedMembers(given);
    PdfBuilder pdf;
    addPages(pdf, description["pages"]);
    const QString labels = description["labels"].toString();
    if (!labels.isEmpty()) pdf.setCatalogEntry("/PageLabels", "<< /Nums [" + labels.toStdString() + "] >>");
    if (description.contains("outline")) addOutline(pdf, entriesOf(pdf, outlineOf(description["outline"])));
    PdfBuilder::Options options;
    options.version = description["version"].toString("1.4").toStdString();
    options.userPassword = description["userPassword"].toString().toStdString();
    options.ownerPassword = description["ownerPassword"].toString().toStdString();
    pdf.save(path, options);
}

}  // namespace leafwright::test
