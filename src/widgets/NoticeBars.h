#pragma once

#include <QFrame>
#include <QHash>

#include <functional>

class QLabel;
class QVBoxLayout;

namespace leafwright {

/// What a bar says, and what can be done about it.
struct Notice {
    struct Button {
        QString title;
        std::function<void()> action;  ///< Called when the button is pressed; the bar stays.
    };
    QString text;
    QList<Button> buttons = {};
};

/// One bar with a notice and a button that closes it. It is drawn in the palette's colours.
class NoticeBar final : public QFrame {
    Q_OBJECT

public:
    explicit NoticeBar(const Notice &notice, QWidget *parent = nullptr);

    QString text() const;

Q_SIGNALS:
    /// The user is done with the notice: the close button was pressed, or Escape.
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QLabel *text_;
};

/// Bars, one below the other, with what the user should know and need not answer at once. Without a notice
/// they take no room. A notice stays until it is closed, taken away, or replaced by one of the same name.
class NoticeBars final : public QWidget {
    Q_OBJECT

public:
    explicit NoticeBars(QWidget *parent = nullptr);

    /// Shows a notice, and tells assistive programs.
    void setNotice(const QString &name, const Notice &notice);
    void removeNotice(const QString &name);
    /// The bar with the notice of a name; null if there is none.
    NoticeBar *bar(const QString &name) const { return bars_.value(name); }

private:
    QVBoxLayout *layout_;
    QHash<QString, NoticeBar *> bars_;
};

}  // namespace leafwright
