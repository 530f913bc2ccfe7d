#pragma once
// Entry-field behaviour shared by every window: focus colour, Enter moves on, capitals,
// Escape closes the window (which then asks its exit question).
#include <QColor>
#include <QHash>
#include <QObject>
#include <QPointer>
#include <functional>

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

    // Normalises the field and says whether it may be left; a refusal has been shown to the
    // user already. Runs when the field loses focus and before any action taken by key.
    using LeaveCheck = std::function<bool(QWidget *field)>;
    void setLeaveCheck(QWidget *field, LeaveCheck check);
    // The focused field's check, before a button's action (Alt+S, Alt+P, Escape): false
    // keeps the focus in the field and the action must stop.
    bool checkFocused();

    // The text a field holds, whatever kind of editor it is.
    static QString textOf(const QWidget *field);

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
    bool runCheck(QWidget *field);
    QWidget *checkedFieldFor(QWidget *focus) const;
    void moveOn(QWidget *field);

    QHash<QWidget *, LeaveCheck> m_checks;
    // The field whose check refused last, and its text then: the same refusal is not shown twice.
    QPointer<QWidget> m_refused;
    QString m_refusedText;
};
