#pragma once
// Base of every form window: installs the entry-field behaviour, opens with the cursor in
// the first field, runs the focused field's check before any button action, shows a status
// line, and asks its closing question whenever the window is about to close (Escape, the
// title bar button, close()). Answering No keeps the window open with its edits.
#include <QDialog>
#include <QStringList>
#include <functional>
#include <memory>

class Dialogs;
class FieldBehaviour;
class QLabel;

class FormWindow : public QDialog
{
    Q_OBJECT
public:
    explicit FormWindow(QWidget *parent = nullptr);
    ~FormWindow() override;

    // Tests and hosts may answer the questions themselves; null restores the message boxes.
    void setDialogs(Dialogs *dialogs);
    Dialogs *dialogs() const { return m_dialogs; }
    FieldBehaviour *fieldBehaviour() const { return m_behaviour; }

    static QString exitQuestion();   // "Do you want to exit ?"

    // A button's action: the focused field's check first; a refusal stops it.
    bool runAction(const std::function<void()> &action);

    // The line under the buttons: "Form 15C saved", "2 of 5".
    void setStatusLabel(QLabel *label);
    void showStatus(const QString &text);
    QString statusText() const;

    // A message for a window that may not be on screen yet (a failed load while it is being
    // built): shown at once when visible, else as soon as it shows.
    void informWhenShown(const QString &message);

    // Where the window opens: the first entry field in tab order that takes input, unless
    // the window opens on its list.
    virtual QWidget *firstField() const;

public slots:
    void reject() override;

protected:
    // Asked when the window is about to close; true lets it close. The default asks the
    // exit question with the exclamation icon.
    virtual bool confirmClose();
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::unique_ptr<Dialogs> m_ownDialogs;
    Dialogs *m_dialogs = nullptr;
    FieldBehaviour *m_behaviour = nullptr;
    QLabel *m_status = nullptr;
    bool m_asking = false;
    bool m_shownOnce = false;
    QStringList m_pending;
};
