#pragma once
// Adds or edits one deductor: its Main_Info row and its Main_Info_oth row.
#include "shared/DeductorMaster.h"
#include "ui/FormWindow.h"

#include <QList>
#include <QString>

class IDataObject;
class QPushButton;
class QTabWidget;
class SlotFields;

class DeductorDialog : public FormWindow
{
    Q_OBJECT
public:
    // An empty code adds a new deductor.
    DeductorDialog(IDataObject *data, const QString &code, QWidget *parent = nullptr);
    QString code() const { return m_code; }

    // Checks and saves; false (and the user told why) when something is missing or wrong.
    bool save();

    // The editor of a column ("Code_No", "panno"), named "txt<Column>".
    QWidget *field(const QString &column) const;

private:
    struct Place {
        SlotFields *fields = nullptr;
        int index = -1;
    };
    Place placeOf(const QString &column) const;
    void load();
    // The dialog's values checked by the master's rules; a refusal shown at its field.
    bool check(DeductorMaster::Record &record);
    bool refuse(const QString &column, const QString &message);
    QString valueOf(const QString &column) const;
    void setValueOf(const QString &column, const QString &value);
    void fillStatusList();
    void cmdupdateClicked();

    IDataObject *m_data;
    QString m_code;
    bool m_isNew;
    QTabWidget *m_tabs = nullptr;
    QList<SlotFields *> m_pages;   // one per tab; the last holds the Main_Info_oth columns
};
