#pragma once

#include <QLabel>

namespace leafwright {

/// One line of plain text, shortened at its end where there is no room for all of it; its tool tip is the
/// whole text. It asks for no width of its own, so that a long text does not make its window wide.
class ElidedLabel final : public QLabel {
    Q_OBJECT

public:
    explicit ElidedLabel(QWidget *parent = nullptr);

    void setText(const QString &text);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *event) override;
};

}  // namespace leafwright
