#include "cli/batch/JobResult.h"

#include "formats/JsonWriter.h"

#include <cmath>

namespace leafwright::cli {

namespace {

QString nameOf(JobResult::Status status) {
    switch (status) {
        case JobResult::Status::Done:
            return QStringLiteral("done");
        case JobResult::Status::Skipped:
            return QStringLiteral("skipped");
        case JobResult::Status::Failed:
            break;
    }
    return QStringLiteral("failed");
}

template <typename Number>
void member(leafwright::JsonWriter &json, const char *name, const std::optional<Number> &number) {
    json.key(name);
    if (number) {
        json.value(*number);
    } else {
        json.null();
    }
}

std::optional<double> rounded(std::optional<double> number, double steps) {
    return number ? std::optional(std::round(*number * steps) / steps) : std::nullopt;
}

/// JSON on one line: strings of ours have no line feeds, and what stands behind one is indentation.
QByteArray onOneLine(const QByteArray &json) {
    QByteArray line;
    for (const QByteArray &part : json.split('\n'))
        line += part.trimmed();
    return line;
}

void writeMembers(const JobResult &result, leafwright::JsonWriter &json) {
    json.member("file", result.file);
    json.member("out", result.out);
    json.member("status", nameOf(result.status));
    member(json, "seconds", rounded(result.seconds, 1000));
    member(json, "pages", result.facts.pages);
    member(json, "entries", result.facts.entries);
    constexpr double bytesInAMegabyte = 1 << 20;
    const auto megabytes = result.peakBytes
                               ? std::optional(static_cast<double>(*result.peakBytes) / bytesInAMegabyte)
                               : std::nullopt;
    member(json, "peakMB", rounded(megabytes, 10));
    json.member("message", result.message);
}

void writeSignature(const QByteArray &signature, leafwright::JsonWriter &json) {
    json.member("job", signature.isNull() ? QString() : QString::fromLatin1(signature));
}

}  // namespace

QByteArray lineOf(const JobResult &result, const QByteArray &signature) {
    QByteArray line;
    {
        leafwright::JsonWriter json([&line](const QByteArray &bytes) { line += bytes; },
                                    leafwright::JsonWriter::Layout::Compact);
        json.beginObject();
        writeMembers(result, json);
        writeSignature(signature, json);
        if (!result.printed.isNull() && !result.printedIsJson)
            json.member("result", QString::fromUtf8(result.printed));
        json.endObject();
    }
    if (!result.printed.isNull() && result.printedIsJson) {
        line.chop(2);  // the bracket and the line feed
        line += ", \"result\": " + onOneLine(result.printed) + "}\n";
    }
    return line;
}

QByteArray logLineOf(const JobResult &result, const QByteArray &signature,
                     const std::optional<JobMark> &mark) {
    QByteArray line;
    {
        leafwright::JsonWriter json([&line](const QByteArray &bytes) { line += bytes; },
                                    leafwright::JsonWriter::Layout::Compact);
        json.beginObject();
        writeMembers(result, json);
        member(json, "size", mark ? std::optional(mark->size) : std::nullopt);
        member(json, "modified", mark ? std::optional(mark->modified) : std::nullopt);
        writeSignature(signature, json);
        json.endObject();
    }
    return line;
}

}  // namespace leafwright::cli
