#pragma once
// Entry-field behaviour shared by every window: focus colour, Enter moves on, capitals,
// Escape closes the window (which then asks its exit question).
#include <QColor>
#include <QObject>

class QWidget;

class FieldBehaviour : public QObject
{
    Q_OBJECT
public:
    // 0xC0E0FF in blue-green-red order: a light orange.
    static QColor focusColour() { return QColor(0xFF, 0xE0, 0xC0); }
    static QColor normalColour() { return QColor(Qt::white); }

    explicit FieldBehaviour(QObject *parent = nullptr);

    // Single-line fields get Enter-as-Tab; multi-line ones keep Enter for new lines.
    static bool isEntryField(const QWidget *widget);
    static bool isMultiLine(const QWidget *widget);

    // E-mail fields keep what is typed (dynamic property "email" = true).
    static void markEmail(QWidget *field, bool email = true);
    static bool isEmail(const QWidget *field);

    void attach(QWidget *field);
    // Every entry field under root that is not attached yet.
    void attachAll(QWidget *root);
    bool isAttached(const QWidget *field) const;

signals:
    void fieldEntered(QWidget *field);
    void fieldLeft(QWidget *field);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    static void paint(QWidget *field, const QColor &colour);
};
