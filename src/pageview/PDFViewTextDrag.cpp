#include "pageview/PDFViewTextDrag.h"

#include <QDrag>
#include <QMimeData>
#include <QWidget>

PDFViewTextDrag::PDFViewTextDrag(QWidget *view) : QObject(view) {}

void PDFViewTextDrag::exec(const QString &text) {
    auto *const data = new QMimeData;
    data->setText(text);
    auto *const drag = new QDrag(this);  // deletes itself when it is over
    drag->setMimeData(data);
    drag->exec(Qt::CopyAction);
}
