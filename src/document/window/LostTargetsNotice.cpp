#include "document/window/LostTargetsNotice.h"

#include "document/MyDocument.h"
#include "widgets/NoticeBars.h"

namespace leafwright {

void showLostTargets(NoticeBars &notices, const LostTargets &lost) {
    static const QString name = QStringLiteral("lostTargets");
    QStringList sentences;
    if (lost.unknownLabels > 0) {
        sentences.append(
            MyDocument::tr(
                "%1 entries have page labels that no page has any more (%2), and saving leads them "
                "to the first page.")
                .arg(QString::number(lost.unknownLabels), lost.firstUnknownLabels.join(QLatin1String(", "))));
    }
    if (lost.actions > 0) {
        sentences.append(
            MyDocument::tr("%1 entries that did something else than show a page lead nowhere now, because "
                           "the file does not have them any more.")
                .arg(lost.actions));
    }
    if (sentences.isEmpty()) return notices.removeNotice(name);
    notices.setNotice(name, {sentences.join(u' ')});
}

}  // namespace leafwright
