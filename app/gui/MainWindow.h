#pragma once
// The host window: choose the deductor and the assessment year, open a form.
#include "entry/Forms.h"
#include "json/Dialogs.h"

#include <QMainWindow>
#include <memory>

class IDataObject;
class QComboBox;
class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;
class QLabel;

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    MainWindow(IDataObject *data, std::unique_ptr<Forms> component, QWidget *parent = nullptr);

    // Fills the deductor list from Main_Info; selects the given code when present.
    void reloadDeductors(const QString &select = QString());
    // Opens the form of the operation, modally. False when it is not available or the
    // selection is incomplete (the user has been told why).
    bool openForm(const QString &operationName);
    // The deductee master of the chosen deductor, modally (Alt+T). False when no deductor
    // is chosen (the user has been told).
    bool openDeducteeMaster();
    // Tests answer the window's messages themselves; null restores the message boxes.
    void setDialogs(Dialogs *dialogs);

    // Settings keys of the deductor and year chosen last.
    static QString lastDeductorKey();
    static QString lastYearKey();

private:
    void buildUi();
    void fillFormList();
    bool applySelection();
    void onFormActivated(QTreeWidgetItem *item);
    void onNewDeductor();
    void onEditDeductor();
    void updateStatus();
    // The title names the chosen deductor and year; both are kept for the next start.
    void selectionChanged();
    QString selectionTitle() const;

    IDataObject *m_data;
    std::unique_ptr<Dialogs> m_ownDialogs;
    Dialogs *m_dialogs = nullptr;
    std::unique_ptr<Forms> m_component;
    QComboBox *m_deductor = nullptr;
    QLineEdit *m_year = nullptr;
    QTreeWidget *m_forms = nullptr;
    QLabel *m_status = nullptr;
};
