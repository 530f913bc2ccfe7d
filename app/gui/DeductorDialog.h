#pragma once
// Adds or edits one deductor: its Main_Info row and its Main_Info_oth row.
#include "ui/FormWindow.h"

#include <QHash>
#include <QString>

class IDataObject;
class QWidget;

class DeductorDialog : public FormWindow
{
    Q_OBJECT
public:
    // An empty code adds a new deductor.
    DeductorDialog(IDataObject *data, const QString &code, QWidget *parent = nullptr);
    QString code() const { return m_code; }

    // Checks and saves; false (and the user told why) when something is missing or wrong.
    bool save();

    QWidget *field(const QString &column) const { return m_fields.value(column.toLower()); }

private:
    void load();
    bool check();
    QString valueOf(const QString &column) const;

    IDataObject *m_data;
    QString m_code;
    bool m_isNew;
    QHash<QString, QWidget *> m_fields;   // lower-case column name -> editor
};
