// Saving a declaration with five schedules of 100 rows each, on one embedded server:
// statement by statement with "Flush Tables" after each (the way the form used to save)
// against one transaction and one flush (the way it saves now). Then an import of 1,000
// declarations from one file. The last line is ratio=old/new.
#include "declarations/DeclarationForm.h"
#include "declarations/DeclarationSlots.h"
#include "declarations/DeclarationTransfer.h"
#include "host/DataHome.h"
#include "host/DataObject.h"
#include "host/ServiceRegistry.h"
#include "json/JSON.h"
#include "shared/ColumnEncoder.h"
#include "shared/FieldRules.h"
#include "shared/ScheduleStore.h"
#include "shared/modbase.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cstdio>

namespace {

constexpr int kRows = 100;
constexpr int kRounds = 5;
constexpr int kImported = 1000;

QList<QList<QStringList>> schedules()
{
    QList<QList<QStringList>> out;
    for (int k = 0; k < 5; ++k) {
        const ScheduleLayout layout = DeclarationSlots::schedule(false, k);
        QList<QStringList> rows;
        for (int r = 0; r < kRows; ++r) {
            QStringList row;
            for (const ScheduleColumn &c : layout.columns)
                row << (c.kind == ScheduleColumn::Kind::Text ? QStringLiteral("HOLDING %1").arg(r)
                        : c.kind == ScheduleColumn::Kind::Date ? QStringLiteral("01/04/2024")
                                                               : QString::number(r + 1));
            rows << row;
        }
        out << rows;
    }
    return out;
}

QStringList values(const DeclarationForm &form, int i)
{
    QStringList v(form.slotTable().size());
    v[0] = QStringLiteral("DECLARANT %1").arg(i);
    v[31] = QStringLiteral("11111");
    return v;
}

bool run(IDataObject &d, const QString &sql)
{
    if (d.ConQuery(sql))
        return true;
    std::fprintf(stderr, "bench_declarations: %s\n", qPrintable(d.lastError()));
    return false;
}

// The old save: every statement on its own, each followed by "Flush Tables", schedule
// texts quoted as they stand.
bool saveTheOldWay(IDataObject &d, const DeclarationForm &form, int period, int serial,
                   const QList<QList<QStringList>> &rows)
{
    const QString p = QString::number(period), s = QString::number(serial);
    const QString flush = QStringLiteral("Flush Tables");
    bool ok = run(d, QStringLiteral("DELETE FROM Tb15gM WHERE Period_Code=") + p + QStringLiteral(" AND FormSrNo=") + s)
        && run(d, flush)
        && run(d, ColumnEncoder::positionalInsert(QStringLiteral("INSERT INTO Tb15gM VALUES ("), {p, s}, d,
                                                  form.slotTable(), values(form, serial)))
        && run(d, flush);
    for (int k = 0; ok && k < 5; ++k) {
        const ScheduleLayout layout = DeclarationSlots::schedule(false, k);
        ok = run(d, QStringLiteral("Delete From ") + layout.table + QStringLiteral(" Where Period_Code=") + p
                        + QStringLiteral(" and FormSrId=") + s)
            && run(d, flush);
        for (int r = 0; ok && r < rows[k].size(); ++r) {
            QString sql = QStringLiteral("Insert Into ") + layout.table + QStringLiteral(" Values (") + p + QLatin1Char(',')
                + s + QLatin1Char(',') + QString::number(r + 1);
            for (int c = 0; c < layout.columns.size(); ++c) {
                const QString &cell = rows[k][r][c];
                sql += layout.columns[c].align == ScheduleColumn::Align::Right
                    ? QLatin1Char(',') + ColumnEncoder::number(FieldRules::leadingNumber(cell))
                    : QStringLiteral(",'") + cell + QLatin1Char('\'');
            }
            ok = run(d, sql + QLatin1Char(')')) && run(d, flush);
        }
    }
    return ok;
}

QString importFile()
{
    QString json = QStringLiteral("[");
    for (int i = 0; i < kImported; ++i) {
        QStringList declarant(33);
        declarant[0] = QStringLiteral("imported %1").arg(i);
        declarant[1] = QStringLiteral("AAAPR1234K");
        declarant[30] = QStringLiteral("150000");
        declarant[31] = QStringLiteral("10000");
        json += (i ? QStringLiteral(",\n") : QString()) + QStringLiteral("{\"declarant\": [\"")
            + declarant.join(QStringLiteral("\",\"")) + QStringLiteral("\"], \"payer\": [\"\"")
            + QStringLiteral(",\"\"").repeated(15)
            + QStringLiteral("], \"schedules\": [[[\"100\", \"equity\", \"1000\", \"101-200\", \"1-4-2020\"]], [], [], [], []]}");
    }
    return json + QStringLiteral("]");
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    // Static: removed only after the embedded server, a later static, has stopped.
    static QTemporaryDir home;
    DataHome::setOverride(home.path());
    ServiceRegistry::registerBuiltins();
    if (!modbase::Main()) {
        std::fprintf(stderr, "bench_declarations: %s\n", qPrintable(modbase::mainError()));
        return 1;
    }
    IDataObject &d = modbase::data();
    auto *real = dynamic_cast<DataObject *>(&d);
    if (!d.connect() || !real || !real->loadDemo()) {
        std::fprintf(stderr, "bench_declarations: cannot start the database: %s\n", qPrintable(d.lastError()));
        return 1;
    }
    d.setCodeno(QStringLiteral("DEMO01"));
    d.setAsYear(QStringLiteral("2025-26"));
    DeclarationForm form(false);
    if (!form.load()) {
        std::fprintf(stderr, "bench_declarations: %s\n", qPrintable(form.loadError()));
        return 1;
    }
    const QList<QList<QStringList>> rows = schedules();

    // Alternating rounds, the same serials replaced each time, so both ways meet the same tables.
    double oldSeconds = 0, newSeconds = 0;
    for (int round = 0; round < kRounds; ++round) {
        QElapsedTimer t;
        t.start();
        if (!saveTheOldWay(d, form, form.periodCode(), 1, rows))
            return 1;
        oldSeconds += double(t.nsecsElapsed()) / 1e9;
        t.restart();
        if (form.storeDeclaration(2, values(form, 2), rows) != 2) {
            std::fprintf(stderr, "bench_declarations: %s\n", qPrintable(form.saveError()));
            return 1;
        }
        newSeconds += double(t.nsecsElapsed()) / 1e9;
    }
    std::printf("save of one declaration with 5 x %d schedule rows, %d rounds\n", kRows, kRounds);
    std::printf("  statement by statement, flush after each: %.3f s a declaration\n", oldSeconds / kRounds);
    std::printf("  one transaction, one flush:               %.3f s a declaration\n", newSeconds / kRounds);

    d.setAsYear(QStringLiteral("2026-27"));
    DeclarationTransfer transfer(false);
    QString why;
    if (!transfer.open(&why)) {
        std::fprintf(stderr, "bench_declarations: %s\n", qPrintable(why));
        return 1;
    }
    QElapsedTimer t;
    t.start();
    JsonParser parser;
    const JsonValue records = parser.parse(importFile());
    int stored = 0;
    for (const JsonValue &record : *records.collection())
        stored += transfer.importRecord(record, &why) > 0 ? 1 : 0;
    const double importSeconds = double(t.nsecsElapsed()) / 1e9;
    if (stored != kImported) {
        std::fprintf(stderr, "bench_declarations: %d of %d imported: %s\n", stored, kImported, qPrintable(why));
        return 1;
    }
    std::printf("import of %d declarations from one file: %.2f s, %.0f declarations a second\n", kImported,
                importSeconds, kImported / importSeconds);
    std::printf("ratio=%.1f\n", oldSeconds / newSeconds);
    return 0;
}
