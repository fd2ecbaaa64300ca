#pragma once

#include <QObject>

class QMimeData;
class QWidget;

/// The source of a drag of text out of a page view. Whoever is dropped on knows such a drag by the name of
/// this class, which begins with that of the view; therefore it stands outside any namespace.
class PDFViewTextDrag final : public QObject {
    Q_OBJECT

public:
    /// @param view from which the text comes; it owns this
    explicit PDFViewTextDrag(QWidget *view);

    /// Drags the text until it is dropped or given up. It can only be copied.
    void exec(const QString &text);
};
