#include "document/window/EntriesElsewhereNotice.h"

#include "document/MyDocument.h"
#include "document/window/DocumentWindow.h"
#include "platform/Settings.h"
#include "platform/UserDefaults.h"
#include "widgets/NoticeBars.h"

namespace leafwright {

EntriesElsewhereNotice::EntriesElsewhereNotice(MyDocument &document) : document_(document) {
    edited_.setSingleShot(true);
    connect(&edited_, &QTimer::timeout, this, &EntriesElsewhereNotice::follow);
    connect(&document, &MyDocument::historyChanged, &edited_, qOverload<>(&QTimer::start));
    connect(&document.platform().userDefaults(), &UserDefaults::valueChanged, this,
            [this](const QString &key) {
                if (key == setting::keepPagesOfEntries) show();
            });
}

void EntriesElsewhereNotice::follow() {
    if (text() != told_) show();
}

void EntriesElsewhereNotice::show() {
    static const QString name = QStringLiteral("entriesElsewhere");
    NoticeBars &notices = *document_.myWindow()->notices();
    told_ = text();
    if (told_.isEmpty()) return notices.removeNotice(name);
    notices.setNotice(name, {told_, {{MyDocument::tr("Keep Their Pages"), [this] {
                                          document_.platform().userDefaults().setValue(
                                              setting::keepPagesOfEntries, true);
                                      }}}});
}

QString EntriesElsewhereNotice::text() const {
    const EntriesElsewhere entries = document_.outline().entriesElsewhere();
    QStringList sentences;
    if (entries.byRepeatedLabels.count > 0) {
        sentences.append(
            MyDocument::tr(
                "Some pages of this PDF have the same label, and saving leads these entries to the "
                "last page with theirs: %1.")
                .arg(entries.byRepeatedLabels.list()));
    }
    if (entries.byPrintedNumbers.count > 0) {
        sentences.append(
            MyDocument::tr("Page labels that begin with “p” are read as printed page numbers, and saving "
                           "leads these entries to the pages with those: %1.")
                .arg(entries.byPrintedNumbers.list()));
    }
    return sentences.join(u' ');
}

}  // namespace leafwright
