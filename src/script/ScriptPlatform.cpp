#include "script/ScriptPlatform.h"

#include "files/FileReading.h"
#include "script/ScriptFiles.h"
#include "texts/Translated.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace leafwright::script {

namespace {

constexpr Translated translated{"ScriptPlatform"};

/// Why a panel would not take a path; null if it would.
QString problemOfPath(const FilePanel &panel, const QString &path, bool saves) {
    const QFileInfo info(path);
    if (saves && !fileExists(info.path())) return translated("there is no folder %1").arg(info.path());
    if (!saves && !fileExists(path)) return translated("there is no file %1").arg(path);
    if (panel.shouldEnablePath && !panel.shouldEnablePath(path))
        return translated("the panel does not offer %1").arg(path);
    return {};
}

}  // namespace

void ScriptPlatform::stop(const QString &reason) {
    if (unanswered_.isNull()) unanswered_ = reason;
}

int ScriptPlatform::buttonFor(const Alert &alert) {
    const auto last = static_cast<int>(alert.buttons.size()) - 1;
    if (last <= 0) return 0;
    // Whatever is answered after a question that stops the script is undone with the rest.
    if (answers_.isEmpty()) {
        stop(translated("the alert \"%1\" finds no answer; put one of these before the step: %2")
                 .arg(alert.message, alert.buttons.join(QLatin1String(", "))));
        return last;
    }
    const auto answer = answers_.takeFirst();
    const int *number = std::get_if<int>(&answer);
    const auto button = number ? *number : static_cast<int>(alert.buttons.indexOf(std::get<QString>(answer)));
    if (button >= 0 && button <= last) return button;
    stop(translated("the alert \"%1\" has no button \"%2\", but these: %3")
             .arg(alert.message, number ? QString::number(*number) : std::get<QString>(answer),
                  alert.buttons.join(QLatin1String(", "))));
    return last;
}

int ScriptPlatform::runModal(const Alert &alert) {
    const int button = buttonFor(alert);
    happenings_.alerts.push_back({alert, alert.buttons.value(button)});
    return button;
}

std::optional<QString> ScriptPlatform::chooseFile(const FilePanel &panel, bool saves) {
    if (chosenFiles_.isEmpty()) {
        stop(translated("the panel \"%1\" finds no file; put a chooseFile before the step").arg(panel.title));
        return std::nullopt;
    }
    const std::optional<QString> path = chosenFiles_.takeFirst();
    const auto absolute = path ? files_.absolute(*path) : std::nullopt;
    happenings_.panels.push_back({panel, saves, absolute ? files_.told(*absolute) : QString()});
    if (!path) return std::nullopt;
    if (!absolute) {
        stop(*path + QLatin1String(": ") + noWorkingFolder());
        return std::nullopt;
    }
    const QString wanted = saves ? *absolute : files_.placeToRead(*absolute);
    if (const QString problem = problemOfPath(panel, wanted, saves); !problem.isNull()) {
        stop(problem);
        return std::nullopt;
    }
    return saves ? placeToSave(*absolute, panel) : wanted;
}

/// Nothing where the script may not save there, which stops it.
std::optional<QString> ScriptPlatform::placeToSave(const QString &path, const FilePanel &panel) {
    const bool isPDF = panel.allowedFileTypes.contains(QLatin1String("pdf"));
    auto place = files_.placeFor(path, isPDF ? ScriptFiles::Content::PDF : ScriptFiles::Content::Map);
    if (const auto *refusal = std::get_if<PDFError>(&place)) {
        stop(files_.told(path) + QLatin1String(": ") + refusal->message);
        return std::nullopt;
    }
    return std::get<QString>(std::move(place));
}

std::optional<QString> ScriptPlatform::runOpenPanel(const FilePanel &panel) {
    return chooseFile(panel, false);
}

std::optional<QString> ScriptPlatform::runSavePanel(const FilePanel &panel) {
    return chooseFile(panel, true);
}

void ScriptPlatform::revealFile(const QString &path) {
    happenings_.workspace.push_back({Happenings::ShownElsewhere::Kind::Reveal, files_.told(path)});
}

void ScriptPlatform::openFile(const QString &path) {
    happenings_.workspace.push_back({Happenings::ShownElsewhere::Kind::Open, files_.told(path)});
}

void ScriptPlatform::openURL(const QUrl &url) {
    happenings_.workspace.push_back(
        {Happenings::ShownElsewhere::Kind::Address, url.toString(QUrl::FullyEncoded)});
}

QString ScriptPlatform::temporaryDirectory() {
    return files_.temporaryDirectory();
}

void ScriptPlatform::performAfterDelay(int milliseconds, QObject *context, std::function<void()> function) {
    later_.push_back({clock_ + milliseconds, context, std::move(function)});
}

bool ScriptPlatform::runLater() {
    if (later_.empty()) return false;
    const auto next = std::ranges::min_element(later_, {}, &Later::due);
    const Later call = std::move(*next);
    later_.erase(next);
    clock_ = std::max(clock_, call.due);
    if (call.context) call.function();
    return true;
}

}  // namespace leafwright::script
