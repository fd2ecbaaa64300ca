// Turns a guide from Markdown into a PDF, and tells the outline that it should have:
//
//     mkguide OUT.pdf OUTLINE.json TITLE SUBTITLE COVER.png PICTURES CHAPTER.md...
//
// Each chapter begins with its title, a heading of the first level. Pictures are looked up in the folder
// PICTURES. The cover and the contents in front have roman page labels, the chapters arabic ones. The outline
// is what "leafwright-cli apply" reads. No display is needed; the build sets QT_QPA_PLATFORM=offscreen.

#include "GuideText.h"
#include "PageLabelWriter.h"

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>

#include <cstdio>

namespace {

using guide::Heading;

constexpr double marginMillimetres = 16;
constexpr double pointsPerInch = 72;
const QString contentsTitle = QStringLiteral("Contents");

QString roman(int number) {
    const QStringList numerals{QString(),
                               QStringLiteral("i"),
                               QStringLiteral("ii"),
                               QStringLiteral("iii"),
                               QStringLiteral("iv"),
                               QStringLiteral("v")};
    return numerals.value(number);
}

/// Draws texts page by page, each with its label at the foot.
class Printer {
public:
    explicit Printer(QPdfWriter &writer) : writer_(writer), painter_(&writer) {
        painter_.setRenderHint(QPainter::LosslessImageRendering);
    }

    QSizeF pageSize() const { return {double(writer_.width()), double(writer_.height())}; }

    void printCover(const QString &title, const QString &subtitle, const QImage &picture) {
        const double side = pageSize().width() * 0.3;
        if (!picture.isNull())
            painter_.drawImage(QRectF((pageSize().width() - side) / 2, side, side, side), picture);
        const QRectF below(0, side * 2.3, pageSize().width(), side);
        painter_.setFont(guide::headingFont(1, &writer_));
        painter_.drawText(below, Qt::AlignHCenter, title);
        painter_.setFont(guide::bodyFont(&writer_));
        painter_.drawText(below.translated(0, side / 2), Qt::AlignHCenter | Qt::TextWordWrap, subtitle);
        ++pages_;
    }

    void print(guide::Text &text, QString (*label)(int), int firstNumber) {
        for (int i = 0; i < text.pageCount(); ++i) {
            if (pages_++ > 0) writer_.newPage();
            painter_.save();
            painter_.translate(0, -i * pageSize().height());
            text.draw(painter_, QRectF(QPointF(0, i * pageSize().height()), pageSize()));
            painter_.restore();
            painter_.setFont(guide::footFont(&writer_));
            const double foot = pageSize().height() + writer_.resolution() * 0.2;
            painter_.drawText(QRectF(0, foot, pageSize().width(), writer_.resolution() * 0.3),
                              Qt::AlignHCenter | Qt::AlignTop, label(firstNumber + i));
        }
    }

private:
    QPdfWriter &writer_;
    QPainter painter_;
    int pages_ = 0;
};

QString arabic(int number) {
    return QString::number(number);
}

/// The outline's entries, in the form of "leafwright-cli outline".
class Outline {
public:
    explicit Outline(const QPdfWriter &writer) : writer_(writer) {}

    void add(const QString &title, const QString &label, int level, double y) {
        const QMarginsF margins = writer_.pageLayout().margins(QPageLayout::Point);
        const double height = writer_.pageLayout().fullRectPoints().height();
        const double top = height - margins.top() - y / writer_.resolution() * pointsPerInch;
        entries_.append({title, label, level, QPointF(margins.left(), qMin(height, top + 6))});
    }

    QByteArray toJson() const {
        qsizetype next = 0;
        return QJsonDocument(entriesFrom(next, 1)).toJson();
    }

private:
    struct Entry {
        QString title;
        QString label;
        int level;
        QPointF point;
    };

    // NOLINTNEXTLINE(misc-no-recursion): as deep as the guide's headings
    QJsonArray entriesFrom(qsizetype &next, int level) const {
        QJsonArray result;
        while (next < entries_.size() && entries_[next].level >= level) {
            const Entry &entry = entries_[next++];
            result.append(QJsonObject{
                {QStringLiteral("title"), entry.title},
                {QStringLiteral("pageLabel"), entry.label},
                {QStringLiteral("point"), QJsonArray{entry.point.x(), entry.point.y()}},
                {QStringLiteral("children"), entriesFrom(next, level + 1)},
            });
        }
        return result;
    }

    const QPdfWriter &writer_;
    QList<Entry> entries_;
};

/// Of the chapters' headings, on lines that end with the label of their page.
QString contentsText(const QList<Heading> &headings) {
    QString text = QStringLiteral("# %1\n\n").arg(contentsTitle);
    for (const Heading &heading : headings) {
        if (heading.level > 2) continue;
        const QString line = QStringLiteral("%1\t%2").arg(heading.title, arabic(heading.page + 1));
        text += (heading.level == 1 ? QStringLiteral("**%1**").arg(line) : line) + QStringLiteral("\n\n");
    }
    return text;
}

bool writeFile(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

QString readFiles(const QStringList &paths) {
    QString text;
    for (const QString &path : paths) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "mkguide: %s can't be read\n", qPrintable(path));
            return {};
        }
        text += QString::fromUtf8(file.readAll()) + QStringLiteral("\n\n");
    }
    return text;
}

}  // namespace

int main(int argc, char *argv[]) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString markdown = readFiles(arguments.mid(7));
    if (markdown.isEmpty()) {
        std::fputs("usage: mkguide OUT.pdf OUTLINE.json TITLE SUBTITLE COVER.png PICTURES CHAPTER.md...\n",
                   stderr);
        return 2;
    }
    const QString &pdfPath = arguments[1];
    const QString &title = arguments[3];
    const QString &pictures = arguments[6];
    QPdfWriter writer(pdfPath);
    writer.setTitle(title);
    const QMarginsF margins(marginMillimetres, marginMillimetres, marginMillimetres, marginMillimetres);
    writer.setPageLayout(
        QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Portrait, margins, QPageLayout::Millimeter));

    Outline outline(writer);
    int frontPages = 0;
    {
        Printer printer(writer);
        guide::Text chapters(markdown, pictures, &writer, printer.pageSize());
        guide::Text contents(contentsText(chapters.headings()), pictures, &writer, printer.pageSize());
        printer.printCover(title, arguments[4], arguments[5].isEmpty() ? QImage() : QImage(arguments[5]));
        printer.print(contents, roman, 2);
        printer.print(chapters, arabic, 1);
        outline.add(title, roman(1), 1, 0);
        outline.add(contentsTitle, roman(2), 1, 0);
        for (const Heading &heading : chapters.headings())
            outline.add(heading.title, arabic(heading.page + 1), heading.level, heading.y);
        frontPages = 1 + contents.pageCount();
    }
    if (!appendPageLabels(pdfPath, {{0, 'r'}, {frontPages, 'D'}}) ||
        !writeFile(arguments[2], outline.toJson())) {
        std::fprintf(stderr, "mkguide: %s can't be written\n", qPrintable(pdfPath));
        return 1;
    }
    return 0;
}
