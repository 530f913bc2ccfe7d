#include "shared/ScheduleStore.h"

#include "host/IDataObject.h"
#include "shared/ColumnEncoder.h"
#include "shared/FieldRules.h"
#include "shared/TransactionGuard.h"
#include "shared/modbase.h"

namespace {

constexpr int kKeyColumns = 3;   // Period_Code, FormSrId, Srno

QString keyCondition(int periodCode, int formSrId)
{
    return QString::number(periodCode) + QStringLiteral(" and FormSrId=") + QString::number(formSrId);
}

QString orDefault(const QString &own, const QString &usual)
{
    return own.isEmpty() ? usual : own;
}

} // namespace

namespace ScheduleStore {

QList<QStringList> load(IDataObject &data, const ScheduleLayout &layout, int periodCode, int formSrId)
{
    const QString sql = orDefault(layout.selectSql, QStringLiteral("Select * From ") + layout.table + QStringLiteral(" Where Period_Code="))
        + keyCondition(periodCode, formSrId) + orDefault(layout.orderSql, QStringLiteral(" Order By Srno"));
    Recordset rs;
    if (!data.RecordsetQuery(rs, sql, data.cnnobj(), 3, 3, 1)) {
        QString why = data.lastError();
        if (why.isEmpty())
            why = QStringLiteral("The rows of ") + layout.title + QStringLiteral(" could not be read.");
        throw TdsError(data.lastErrorNumber() ? long(data.lastErrorNumber()) : 5, why,
                       QStringLiteral("ZeltBase.ClsData"));
    }

    QList<QStringList> rows;
    for (rs.moveFirst(); !rs.isEOF(); rs.moveNext()) {
        QStringList row;
        row.reserve(layout.columns.size());
        for (int c = 0; c < layout.columns.size(); ++c) {
            const QString text = rs.text(kKeyColumns + c);
            row << (layout.columns[c].isAmount() ? FieldRules::plainAmount(text) : text);
        }
        rows << row;
    }
    return rows;
}

QStringList statements(const IDataObject &data, const ScheduleLayout &layout, int periodCode, int formSrId,
                       const QList<QStringList> &rows)
{
    const QString p = QString::number(periodCode);
    const QString s = QString::number(formSrId);
    QStringList out;
    out << orDefault(layout.deleteSql, QStringLiteral("Delete From ") + layout.table + QStringLiteral(" Where Period_Code="))
            + keyCondition(periodCode, formSrId);
    if (rows.isEmpty())
        return out;
    // All rows in one statement: a long schedule costs one round trip, not one per row.
    QString sql = orDefault(layout.insertSql, QStringLiteral("Insert Into ") + layout.table + QStringLiteral(" Values "));
    for (int r = 0; r < rows.size(); ++r) {
        // Srno follows the grid's order, whatever numbers the rows carried before.
        sql += (r ? QStringLiteral(",(") : QStringLiteral("(")) + p + QLatin1Char(',') + s + QLatin1Char(',')
            + QString::number(r + 1);
        const QStringList &row = rows[r];
        for (int c = 0; c < layout.columns.size(); ++c) {
            const QString text = c < row.size() ? row[c] : QString();
            sql += QLatin1Char(',');
            if (layout.columns[c].align == ScheduleColumn::Align::Right)
                sql += ColumnEncoder::number(FieldRules::leadingNumber(text));
            else
                sql += data.quoted(text);
        }
        sql += QLatin1Char(')');
    }
    out << sql;
    return out;
}

void store(IDataObject &data, const ScheduleLayout &layout, int periodCode, int formSrId,
           const QList<QStringList> &rows)
{
    TransactionGuard::apply(data, statements(data, layout, periodCode, formSrId, rows));
}

} // namespace ScheduleStore
