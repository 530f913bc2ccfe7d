#include "host/DataObject.h"

#include "host/AmountWords.h"
#include "host/DataHome.h"
#include "host/Database.h"
#include "host/ErrorLog.h"
#include "host/TextHelpers.h"

#include <QApplication>
#include <QComboBox>
#include <QDate>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QScreen>
#include <QStandardPaths>
#include <QTableWidget>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace {

// Master data printed on the forms, from the deductor's rows:
//   firmname          Main_Info.Name (the deductor)
//   Name, Name1       Main_Info.Resp_Name (the responsible person)
//   fname             Main_Info.Resp_FName
//   Designation, stdesig  Main_Info.Resp_Desig
//   PAN1              Main_Info.Resp_Pan
//   pr_add            Resp_Flat, Resp_Building, Resp_Street, Resp_Area, Resp_City, Resp_State,
//                     Resp_PIN joined with ", ", blank parts left out
//   panno, Tanno      Main_Info.panno, Main_Info.Tanno
//   formplace         Main_Info.FormPlace, else Main_Info.city
//   formdate          Main_Info.FormDate, else today (dd/mm/yyyy)
//   Mobile1           Main_Info.Mobile1, else Main_Info.Resp_Mobile
//   GovtState         Main_Info.State
//   circle1           Main_Info_oth.ward, else Main_Info_oth.asofficer
//   ClStatus          Main_Info_oth.status; ClStatusDesc its Status_Master description
struct Master {
    QString firm, tan, pan, city, state, mobile1;
    QString respName, respFName, respDesig, respPan, respMobile, respAddress;
    QString place, date;
    QString ward, officer, status, statusDesc;
};

struct Shared {
    QString codeno;
    QString asYear;
    QString quarter;
    int modePrint = 1;
    bool masterLoaded = false;
    Master master;
    bool pendingFlush = false;
    double ratX = 1.0;
    double ratY = 1.0;
    double ratFS = 1.0;
    unsigned lastErrorNumber = 0;
    QString lastError;
    std::function<int()> prompt;
    std::function<void(const QString &)> message;
};

Shared &shared()
{
    static Shared s;
    return s;
}

DbConnection &db()
{
    return DbConnection::instance();
}

const QString kSource = QStringLiteral("ZeltBase.ClsData");

// Statements on login and password columns carry credentials in their literals.
QString maskCredentials(const QString &statement)
{
    static const QRegularExpression sensitive(QStringLiteral("pass|pwd|login|token|secret|otp"),
                                              QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression literal(QStringLiteral("'(?:[^'\\\\]|''|\\\\.)*'"));
    if (!sensitive.match(statement).hasMatch())
        return statement;
    QString masked = statement;
    masked.replace(literal, QStringLiteral("'***'"));
    return masked;
}

void recordFailure(const QString &procedure)
{
    Shared &s = shared();
    s.lastErrorNumber = db().lastErrorNumber();
    s.lastError = db().lastError();
    QString description = s.lastError;
    if (!db().lastStatement().isEmpty())
        description += QStringLiteral(" : ") + maskCredentials(db().lastStatement());
    ErrorLog::append(DataHome::path(), long(s.lastErrorNumber), description, kSource,
                     QStringLiteral("ClsData\t") + procedure);
}

void clearError()
{
    shared().lastErrorNumber = 0;
    shared().lastError.clear();
}

bool ensureConnected(const QString &procedure)
{
    if (db().isOpen())
        return true;
    if (db().open())
        return true;
    recordFailure(procedure);
    return false;
}

bool fetch(const QString &sql, const QString &procedure, Recordset &rs)
{
    if (!ensureConnected(procedure))
        return false;
    QStringList names;
    Recordset::Rows rows;
    if (!db().select(sql, names, rows)) {
        recordFailure(procedure);
        return false;
    }
    rs.open(sql, names, rows);
    return true;
}

const Master &master()
{
    Shared &s = shared();
    if (s.masterLoaded)
        return s.master;
    Master m;
    if (!s.codeno.isEmpty()) {
        Recordset info;
        if (!fetch(QStringLiteral("Select * From Main_Info Where Code_No=") + DataObject().quoted(s.codeno), QStringLiteral("MasterData"), info))
            return s.master;   // not cached: the next read tries again
        if (!info.isEOF()) {
            m.firm = info.text(QStringLiteral("Name"));
            m.tan = info.text(QStringLiteral("Tanno"));
            m.pan = info.text(QStringLiteral("panno"));
            m.city = info.text(QStringLiteral("city"));
            m.state = info.text(QStringLiteral("State"));
            m.mobile1 = info.text(QStringLiteral("Mobile1"));
            m.respName = info.text(QStringLiteral("Resp_Name"));
            m.respFName = info.text(QStringLiteral("Resp_FName"));
            m.respDesig = info.text(QStringLiteral("Resp_Desig"));
            m.respPan = info.text(QStringLiteral("Resp_Pan"));
            m.respMobile = info.text(QStringLiteral("Resp_Mobile"));
            QStringList parts;
            for (const char *column : {"Resp_Flat", "Resp_Building", "Resp_Street", "Resp_Area", "Resp_City",
                                       "Resp_State", "Resp_PIN"}) {
                const QString part = info.text(QLatin1String(column)).trimmed();
                if (!part.isEmpty())
                    parts << part;
            }
            m.respAddress = parts.join(QStringLiteral(", "));
            m.place = info.text(QStringLiteral("FormPlace"));
            m.date = info.text(QStringLiteral("FormDate"));
        }
        Recordset other;
        if (!fetch(QStringLiteral("Select o.*, s.Status_Desc From Main_Info_oth o Left Join Status_Master s "
                                  "On s.Status_Code=o.status Where o.code_no=") + DataObject().quoted(s.codeno),
                   QStringLiteral("MasterData"), other))
            return s.master;
        if (!other.isEOF()) {
            m.ward = other.text(QStringLiteral("ward"));
            m.officer = other.text(QStringLiteral("asofficer"));
            m.status = other.text(QStringLiteral("status"));
            m.statusDesc = other.text(QStringLiteral("Status_Desc"));
        }
    }
    s.master = m;
    s.masterLoaded = true;
    return s.master;
}

QString orElse(const QString &value, const QString &fallback)
{
    return value.trimmed().isEmpty() ? fallback : value;
}

bool isFlushTables(const QString &sql)
{
    static const QRegularExpression flush(QStringLiteral("^\\s*flush\\s+tables\\s*;?\\s*$"),
                                          QRegularExpression::CaseInsensitiveOption);
    return flush.match(sql).hasMatch();
}

// Edits of the deductor's rows made through this object show at once in the master data.
void forgetMasterDataIfTouched(const QString &sql)
{
    static const QRegularExpression master(QStringLiteral("main_info|status_master"),
                                           QRegularExpression::CaseInsensitiveOption);
    if (master.match(sql).hasMatch())
        shared().masterLoaded = false;
}

bool hasWidgets()
{
    return qobject_cast<QApplication *>(QCoreApplication::instance()) != nullptr;
}

void tell(const QString &text)
{
    if (shared().message)
        shared().message(text);
    else if (hasWidgets())
        QMessageBox::information(QApplication::activeWindow(), QStringLiteral("TDS Forms"), text);
}

int askOutput()
{
    QMessageBox box(QMessageBox::Question, QStringLiteral("Print"),
                    QStringLiteral("Show the form on screen first, or send it to the printer?"),
                    QMessageBox::NoButton, QApplication::activeWindow());
    QPushButton *preview = box.addButton(QStringLiteral("Pre&view"), QMessageBox::AcceptRole);
    QPushButton *print = box.addButton(QStringLiteral("&Print"), QMessageBox::AcceptRole);
    QPushButton *cancel = box.addButton(QStringLiteral("&Cancel"), QMessageBox::RejectRole);
    box.setDefaultButton(preview);
    box.setEscapeButton(cancel);
    box.exec();
    if (box.clickedButton() == preview)
        return 2;
    if (box.clickedButton() == print)
        return 3;
    return 1;
}

} // namespace

std::shared_ptr<HostService> createDataObject()
{
    return std::make_shared<DataObject>();
}

void DataObject::setFormInfoPrompt(std::function<int()> prompt)
{
    shared().prompt = std::move(prompt);
}

void DataObject::setMessageHook(std::function<void(const QString &)> hook)
{
    shared().message = std::move(hook);
}

void DataObject::resetState()
{
    Shared &s = shared();
    s.codeno.clear();
    s.asYear.clear();
    s.quarter.clear();
    s.modePrint = 1;
    s.masterLoaded = false;
    s.master = Master{};
    s.pendingFlush = false;
    s.lastErrorNumber = 0;
    s.lastError.clear();
}

// --- connection and statements

bool DataObject::connect()
{
    if (!ensureConnected(QStringLiteral("Connect")))
        return false;
    clearError();
    return true;
}

bool DataObject::isConnected() const
{
    return db().isOpen();
}

DbConnection *DataObject::cnnobj()
{
    ensureConnected(QStringLiteral("cnnobj"));
    return &db();
}

bool DataObject::RecordsetQuery(Recordset &rs, const QString &sql, DbConnection *, int, int, int)
{
    // Always a static client-side recordset, whatever cursor the caller asked for; requery()
    // runs the statement again on the same connection.
    rs.close();
    auto load = [](const QString &statement, QStringList &names, Recordset::Rows &rows) {
        const QString procedure = QStringLiteral("RecordsetQuery");
        if (!ensureConnected(procedure))
            return false;
        if (!db().select(statement, names, rows)) {
            recordFailure(procedure);
            return false;
        }
        return true;
    };
    QStringList names;
    Recordset::Rows rows;
    if (!load(sql, names, rows))
        return false;
    rs.open(sql, std::move(names), std::move(rows), load);
    clearError();
    return true;
}

namespace {
// expectedError 0: every failure is logged.
bool conQuery(const QString &sql, unsigned expectedError)
{
    if (!ensureConnected(QStringLiteral("ConQuery")))
        return false;
    // "Flush Tables" would commit an open transaction; it runs after the commit instead.
    if (db().inTransaction() && isFlushTables(sql)) {
        shared().pendingFlush = true;
        clearError();
        return true;
    }
    if (!db().execute(sql)) {
        if (expectedError != 0 && db().lastErrorNumber() == expectedError) {
            shared().lastErrorNumber = db().lastErrorNumber();
            shared().lastError = db().lastError();
        } else {
            recordFailure(QStringLiteral("ConQuery"));
        }
        return false;
    }
    forgetMasterDataIfTouched(sql);
    clearError();
    return true;
}
} // namespace

bool DataObject::ConQuery(const QString &sql)
{
    return conQuery(sql, 0);
}

bool DataObject::ConQueryExpecting(const QString &sql, unsigned expectedError)
{
    return conQuery(sql, expectedError);
}

QString DataObject::lastError() const
{
    return shared().lastError;
}

unsigned DataObject::lastErrorNumber() const
{
    return shared().lastErrorNumber;
}

bool DataObject::BeginTrans()
{
    if (!ensureConnected(QStringLiteral("BeginTrans")))
        return false;
    if (!db().beginTransaction()) {
        recordFailure(QStringLiteral("BeginTrans"));
        return false;
    }
    shared().pendingFlush = false;
    clearError();
    return true;
}

bool DataObject::CommitTrans()
{
    if (!ensureConnected(QStringLiteral("CommitTrans")))
        return false;
    const bool flush = shared().pendingFlush;
    shared().pendingFlush = false;
    if (!db().commit()) {
        recordFailure(QStringLiteral("CommitTrans"));
        return false;
    }
    if (flush && !db().execute(QStringLiteral("Flush Tables"))) {
        recordFailure(QStringLiteral("CommitTrans"));
        return false;
    }
    clearError();
    return true;
}

bool DataObject::RollbackTrans()
{
    if (!ensureConnected(QStringLiteral("RollbackTrans")))
        return false;
    shared().pendingFlush = false;
    shared().masterLoaded = false;   // a rolled-back edit of the deductor must not linger
    if (!db().rollback()) {
        recordFailure(QStringLiteral("RollbackTrans"));
        return false;
    }
    clearError();
    return true;
}

// --- current selection

QString DataObject::codeno() const
{
    return shared().codeno;
}

void DataObject::setCodeno(const QString &code)
{
    Shared &s = shared();
    if (s.codeno == code)
        return;
    s.codeno = code;
    s.masterLoaded = false;
}

QString DataObject::AsYear() const
{
    return shared().asYear;
}

void DataObject::setAsYear(const QString &year)
{
    shared().asYear = year;
}

QString DataObject::quarter() const
{
    return shared().quarter;
}

void DataObject::setQuarter(const QString &q)
{
    shared().quarter = q;
}

void DataObject::refreshMasterData()
{
    shared().masterLoaded = false;
}

// --- master data

QString DataObject::Name() const
{
    return master().respName;
}

QString DataObject::fname() const
{
    return master().respFName;
}

QString DataObject::panno() const
{
    return master().pan;
}

QString DataObject::pr_add() const
{
    return master().respAddress;
}

QString DataObject::circle1() const
{
    return orElse(master().ward, master().officer);
}

QString DataObject::firmname() const
{
    return master().firm;
}

QString DataObject::Tanno() const
{
    return master().tan;
}

QString DataObject::formplace() const
{
    return orElse(master().place, master().city);
}

QString DataObject::formdate() const
{
    return orElse(master().date, QDate::currentDate().toString(QStringLiteral("dd/MM/yyyy")));
}

QString DataObject::Designation() const
{
    return master().respDesig;
}

QString DataObject::stdesig() const
{
    return master().respDesig;
}

QString DataObject::Name1() const
{
    return master().respName;
}

QString DataObject::PAN1() const
{
    return master().respPan;
}

QString DataObject::Mobile1() const
{
    return orElse(master().mobile1, master().respMobile);
}

QString DataObject::GovtState() const
{
    return master().state;
}

QString DataObject::ClStatus() const
{
    return master().status;
}

QString DataObject::ClStatusDesc() const
{
    return orElse(master().statusDesc, master().status);
}

// --- folders

QString DataObject::ExePath() const
{
    return DataHome::path();
}

QString DataObject::DocPath() const
{
    return DataHome::docPath();
}

QString DataObject::vTmpPath() const
{
    const QString temp = DataHome::tempPath();
    QDir().mkpath(temp);
    return temp;
}

// --- helpers

QString DataObject::convertdate(const QString &text) const
{
    return TextHelpers::convertDate(text);
}

QString DataObject::ConvertToWord(double amount) const
{
    return AmountWords::ConvertToWord(amount);
}

QString DataObject::ConvertToWord(const QString &amount) const
{
    return AmountWords::ConvertToWord(amount);
}

bool DataObject::ValidPan(const QString &text) const
{
    return TextHelpers::validPan(text);
}

bool DataObject::ValidTan(const QString &text) const
{
    return TextHelpers::validTan(text);
}

QString DataObject::TruncVarSQL(const QString &text) const
{
    return TextHelpers::truncVarSql(text);
}

QString DataObject::GetStateCode(const QString &stateName)
{
    Recordset rs;
    if (!fetch(QStringLiteral("Select State_Code From State_Master Where State_Name=") + quoted(stateName.trimmed()),
               QStringLiteral("GetStateCode"), rs))
        return QString();
    return rs.isEOF() ? QString() : rs.text(0);
}

void DataObject::ComboFillStateList(QComboBox *combo)
{
    if (!combo)
        return;
    Recordset rs;
    if (!fetch(QStringLiteral("Select State_Name From State_Master Order By State_Name"),
               QStringLiteral("ComboFillStateList"), rs))
        return;
    combo->clear();
    for (; !rs.isEOF(); rs.moveNext())
        combo->addItem(rs.text(0));
}

void DataObject::WaitForSeconds(double seconds)
{
    const int ms = seconds > 0 ? int(std::lround(seconds * 1000.0)) : 0;
    if (!QCoreApplication::instance()) {
        QThread::msleep(ulong(ms));
        return;
    }
    if (ms == 0) {
        QCoreApplication::processEvents();
        return;
    }
    // Events keep running (repaints, the browser's replies) while we wait.
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

// --- print mode

void DataObject::ShowFormInfo()
{
    Shared &s = shared();
    if (s.prompt)
        s.modePrint = s.prompt();
    else if (hasWidgets())
        s.modePrint = askOutput();
    // Without a screen the mode the caller set stays.
}

int DataObject::ModePrint() const
{
    return shared().modePrint;
}

void DataObject::setModePrint(int mode)
{
    shared().modePrint = mode;
}

// --- screen

void DataObject::Resize_For_Resolution(QWidget *form)
{
    QScreen *screen = form && form->screen() ? form->screen() : QGuiApplication::primaryScreen();
    if (!screen)
        return;
    // Forms were laid out for 1024x768; they grow on larger screens and are never scaled
    // below their own size (Qt layouts handle small screens by fitting the window).
    const QRect available = screen->availableGeometry();
    Shared &s = shared();
    s.ratX = std::max(1.0, available.width() / 1024.0);
    s.ratY = std::max(1.0, available.height() / 768.0);
    s.ratFS = std::min(s.ratX, s.ratY);
    if (!form || !form->isWindow())
        return;

    const char *scaled = "tdsScaledForResolution";
    QSize size = form->isVisible() || form->testAttribute(Qt::WA_Resized)
                     ? form->size()
                     : form->sizeHint().expandedTo(form->minimumSizeHint());
    if (!form->property(scaled).toBool()) {   // grow once, not on every call
        size = QSize(int(size.width() * s.ratX), int(size.height() * s.ratY));
        form->setProperty(scaled, true);
    }
    size = size.boundedTo(available.size());
    form->resize(size);
    form->move(available.x() + (available.width() - size.width()) / 2,
               available.y() + (available.height() - size.height()) / 2);
}

double DataObject::vScreenRatX() const
{
    return shared().ratX;
}

double DataObject::vScreenRatY() const
{
    return shared().ratY;
}

double DataObject::vScreenRatFS() const
{
    return shared().ratFS;
}

void DataObject::VsTopRow(QTableWidget *grid)
{
    if (!grid || grid->rowCount() == 0)
        return;
    const int row = std::clamp(grid->currentRow(), 0, grid->rowCount() - 1);
    const int column = std::max(0, grid->currentColumn());
    grid->scrollTo(grid->model()->index(row, column), QAbstractItemView::PositionAtTop);
}

void DataObject::ShowCalcu()
{
    static const char *const calculators[] = {"gnome-calculator", "kcalc",     "galculator",  "mate-calc",
                                              "qalculate-qt",     "qalculate-gtk", "speedcrunch", "xcalc"};
    for (const char *name : calculators) {
        const QString program = QStandardPaths::findExecutable(QLatin1String(name));
        if (!program.isEmpty() && QProcess::startDetached(program, {}))
            return;
    }
    tell(QStringLiteral("No calculator is installed. Install one (for example gnome-calculator) and try again."));
}

// --- demo data

bool DataObject::loadDemo()
{
    if (!ensureConnected(QStringLiteral("loadDemo")))
        return false;
    QFile file(QStringLiteral(":/data/demo.sql"));
    if (!file.open(QIODevice::ReadOnly)) {
        shared().lastErrorNumber = 53;
        shared().lastError = QStringLiteral("The demo data is missing from the program.");
        ErrorLog::append(DataHome::path(), 53, shared().lastError, kSource, QStringLiteral("ClsData\tloadDemo"));
        return false;
    }
    if (!db().applyScript(QString::fromUtf8(file.readAll()))) {
        recordFailure(QStringLiteral("loadDemo"));
        return false;
    }
    refreshMasterData();
    clearError();
    return true;
}
