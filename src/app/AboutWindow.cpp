#include "app/AboutWindow.h"

#include "pdf/PDFEngine.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace leafwright {

namespace {

constexpr int iconSize = 96;
constexpr int textWidth = 400;
constexpr int margin = 24;
constexpr int lineSpacing = 10;

/// A text that can be copied into a report.
QLabel *copyableLabel(const QString &text) {
    auto *label = new QLabel(text);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return label;
}

QLabel *nameLabel() {
    auto *label = new QLabel(QApplication::applicationDisplayName());
    label->setObjectName(QStringLiteral("name"));
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 2);
    font.setBold(true);
    label->setFont(font);
    return label;
}

}  // namespace

AboutWindow::AboutWindow() {
    setObjectName(QStringLiteral("about"));
    setWindowTitle(tr("About Leafwright"));
    auto *layout = new QGridLayout(this);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setVerticalSpacing(lineSpacing);
    layout->setColumnMinimumWidth(1, textWidth);
    if (const QIcon programIcon = QApplication::windowIcon(); !programIcon.isNull()) {
        auto *icon = new QLabel;
        icon->setPixmap(programIcon.pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
        layout->addWidget(icon, 0, 0, 5, 1, Qt::AlignTop);
        layout->setHorizontalSpacing(margin);
    }

    QLabel *version = copyableLabel(tr("Version %1").arg(QApplication::applicationVersion()));
    version->setObjectName(QStringLiteral("version"));
    QLabel *licence = copyableLabel(
        tr("Free software under the GNU Affero General Public License, version 3 or later "
           "(AGPL-3.0-or-later). You may use, share and change it under its terms. It comes without any "
           "warranty."));
    licence->setObjectName(QStringLiteral("licence"));
    QLabel *libraries =
        copyableLabel(tr("Built on Qt %1 and %2.").arg(QString::fromLatin1(qVersion()), pdfEngineName()));
    libraries->setObjectName(QStringLiteral("libraries"));

    layout->addWidget(nameLabel(), 0, 1);
    layout->addWidget(version, 1, 1);
    layout->addWidget(copyableLabel(tr("Edits the outline (bookmarks) of PDF files.")), 2, 1);
    layout->addWidget(licence, 3, 1);
    layout->addWidget(libraries, 4, 1);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QPushButton *homePage = buttons->addButton(tr("&Web Site"), QDialogButtonBox::ActionRole);
    homePage->setAutoDefault(false);
    buttons->button(QDialogButtonBox::Close)->setDefault(true);
    layout->setRowMinimumHeight(5, lineSpacing);
    layout->addWidget(buttons, 6, 0, 1, 2);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(homePage, &QPushButton::clicked, this, &AboutWindow::homePageRequested);
    buttons->button(QDialogButtonBox::Close)->setFocus();
}

}  // namespace leafwright
