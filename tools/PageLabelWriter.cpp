#include "PageLabelWriter.h"

#include <QFile>
#include <QRegularExpression>

bool appendPageLabels(const QString &path, const QList<LabelRange> &ranges) {
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite)) return false;
    const QString pdf = QString::fromLatin1(file.readAll());
    static const QRegularExpression trailerPattern(
        QStringLiteral("trailer\\s*<<(.*?)>>\\s*startxref\\s+(\\d+)\\s+%%EOF\\s*$"),
        QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression rootPattern(QStringLiteral("/Root\\s+(\\d+)\\s+0\\s+R"));
    const auto trailer = trailerPattern.match(pdf, pdf.lastIndexOf(QLatin1String("trailer")));
    const auto root = rootPattern.match(trailer.captured(1));
    if (!trailer.hasMatch() || !root.hasMatch()) return false;
    const QString number = root.captured(1);
    const QRegularExpression cataloguePattern(
        QStringLiteral("\\n%1 0 obj\\s*<<(.*?)>>\\s*endobj").arg(number),
        QRegularExpression::DotMatchesEverythingOption);
    const auto catalogue = cataloguePattern.match(pdf);
    if (!catalogue.hasMatch()) return false;

    QString labels;
    for (const LabelRange &range : ranges)
        labels += QStringLiteral(" %1 << /S /%2 >>").arg(range.firstPage).arg(QLatin1Char(range.style));
    const qint64 objectAt = file.size() + 1;
    const QString object = QStringLiteral("\n%1 0 obj\n<<%2/PageLabels << /Nums [%3 ] >>\n>>\nendobj\n")
                               .arg(number, catalogue.captured(1), labels);
    const QString section =
        QStringLiteral("xref\n%1 1\n%2 00000 n \ntrailer\n<<%3/Prev %4\n>>\nstartxref\n%5\n%%EOF\n")
            .arg(number)
            .arg(objectAt, 10, 10, QLatin1Char('0'))
            .arg(trailer.captured(1), trailer.captured(2))
            .arg(file.size() + object.size());
    const QByteArray bytes = (object + section).toLatin1();
    return file.seek(file.size()) && file.write(bytes) == bytes.size() && file.flush();
}
