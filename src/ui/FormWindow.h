#pragma once
// Base of every form window: installs the entry-field behaviour, and asks
// "Do you want to exit ?" whenever the window is about to close (Escape, the title bar
// button, close()). Answering No keeps the window open with its edits.
#include <QDialog>
#include <memory>

class Dialogs;
class FieldBehaviour;

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

public slots:
    void reject() override;

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    std::unique_ptr<Dialogs> m_ownDialogs;
    Dialogs *m_dialogs = nullptr;
    FieldBehaviour *m_behaviour = nullptr;
    bool m_asking = false;
};
