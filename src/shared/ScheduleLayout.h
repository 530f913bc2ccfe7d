#pragma once
// A schedule of a form: detail rows keyed by (Period_Code, FormSrId, Srno), then the data
// columns in table order. No widgets: the grid, the store and the print read the same description.
#include <QList>
#include <QString>

struct ScheduleColumn
{
    enum class Align { Left, Centre, Right };
    enum class Kind { Text, Number, Date };

    QString heading = {};
    Align align = Align::Left;
    Kind kind = Kind::Text;
    QString format = {};   // "###0.00" for amount columns, else empty

    bool isAmount() const { return format == QLatin1String("###0.00"); }
};

struct ScheduleLayout
{
    QString title = {};               // "SCHEDULE I"
    QString table = {};               // "Tb15gT1"
    QList<ScheduleColumn> columns = {};   // data columns, grid column 1..
    // The statement texts of a table that has always been written its own way; empty:
    // "Select * From " + table + " Where Period_Code=", " Order By Srno", "Delete From "
    // + table + " Where Period_Code=", "Insert Into " + table + " Values ".
    QString selectSql = {};
    QString orderSql = {};
    QString deleteSql = {};
    QString insertSql = {};
};
