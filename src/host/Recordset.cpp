#include "host/Recordset.h"

#include <QLocale>
#include <QRegularExpression>

namespace {

enum class Op { Eq, Ne, Lt, Gt, Le, Ge, Like };

struct Criteria {
    QString column;
    Op op = Op::Eq;
    QString value;
    bool quoted = false;
    bool isNull = false;
};

bool parseCriteria(const QString &text, Criteria &c)
{
    const QString t = text.trimmed();
    qsizetype i = 0;
    if (t.startsWith(QLatin1Char('['))) {
        const qsizetype close = t.indexOf(QLatin1Char(']'));
        if (close < 0)
            return false;
        c.column = t.mid(1, close - 1).trimmed();
        i = close + 1;
    } else {
        while (i < t.size() && !t.at(i).isSpace() && !QStringLiteral("=<>!").contains(t.at(i)))
            ++i;
        c.column = t.left(i);
    }
    if (c.column.isEmpty())
        return false;
    while (i < t.size() && t.at(i).isSpace())
        ++i;
    const QString rest = t.mid(i);
    static const std::pair<const char *, Op> ops[] = {
        {"<>", Op::Ne}, {"!=", Op::Ne}, {"<=", Op::Le}, {">=", Op::Ge}, {"=", Op::Eq}, {"<", Op::Lt}, {">", Op::Gt}};
    qsizetype opLength = 0;
    for (const auto &[symbol, op] : ops) {
        if (rest.startsWith(QLatin1String(symbol))) {
            c.op = op;
            opLength = qsizetype(qstrlen(symbol));
            break;
        }
    }
    if (opLength == 0) {
        if (rest.size() > 4 && rest.startsWith(QLatin1String("like"), Qt::CaseInsensitive) && rest.at(4).isSpace()) {
            c.op = Op::Like;
            opLength = 4;
        } else {
            return false;
        }
    }
    QString value = rest.mid(opLength).trimmed();
    if (value.size() >= 2 && value.startsWith(QLatin1Char('\'')) && value.endsWith(QLatin1Char('\''))) {
        value = value.mid(1, value.size() - 2);
        value.replace(QLatin1String("''"), QLatin1String("'"));
        c.quoted = true;
    } else if (value.size() >= 2 && value.startsWith(QLatin1Char('#')) && value.endsWith(QLatin1Char('#'))) {
        value = value.mid(1, value.size() - 2);
        c.quoted = true;
    } else if (value.compare(QLatin1String("null"), Qt::CaseInsensitive) == 0) {
        c.isNull = true;
    }
    c.value = value;
    return true;
}

bool isNumericType(const QVariant &v)
{
    switch (v.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
    case QMetaType::Float:
    case QMetaType::Short:
    case QMetaType::UShort:
        return true;
    default:
        return false;
    }
}

bool toNumber(const QString &text, double &out)
{
    bool ok = false;
    out = QLocale::c().toDouble(text.trimmed(), &ok);
    return ok;
}

bool holds(int cmp, Op op)
{
    switch (op) {
    case Op::Eq:
    case Op::Like:
        return cmp == 0;
    case Op::Ne:
        return cmp != 0;
    case Op::Lt:
        return cmp < 0;
    case Op::Gt:
        return cmp > 0;
    case Op::Le:
        return cmp <= 0;
    case Op::Ge:
        return cmp >= 0;
    }
    return false;
}

bool matches(const QVariant &field, const Criteria &c, const QRegularExpression &like)
{
    if (c.isNull) {
        if (c.op == Op::Eq)
            return field.isNull();
        if (c.op == Op::Ne)
            return !field.isNull();
        return false;
    }
    if (field.isNull())
        return false;
    const QString text = field.toString();
    if (c.op == Op::Like)
        return like.match(text).hasMatch();

    double wanted = 0;
    double actual = 0;
    // A quoted value against a text column stays a text comparison ('007' is not '7').
    const bool numeric = toNumber(c.value, wanted)
                         && (isNumericType(field) ? (actual = field.toDouble(), true)
                                                  : (!c.quoted && toNumber(text, actual)));
    if (numeric)
        return holds(actual < wanted ? -1 : (actual > wanted ? 1 : 0), c.op);
    return holds(QString::compare(text, c.value, Qt::CaseInsensitive), c.op);
}

QRegularExpression likePattern(const QString &pattern)
{
    QString rx;
    for (QChar ch : pattern) {
        if (ch == QLatin1Char('*') || ch == QLatin1Char('%'))
            rx += QStringLiteral(".*");
        else if (ch == QLatin1Char('_') || ch == QLatin1Char('?'))
            rx += QLatin1Char('.');
        else
            rx += QRegularExpression::escape(QString(ch));
    }
    return QRegularExpression(QRegularExpression::anchoredPattern(rx),
                              QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
}

} // namespace

void Recordset::open(const QString &sql, QStringList names, Rows rows, Loader loader)
{
    m_open = true;
    m_sql = sql;
    m_names = std::move(names);
    m_rows = std::move(rows);
    m_loader = std::move(loader);
    m_pos = m_rows.isEmpty() ? -1 : 0;
}

void Recordset::close()
{
    m_open = false;
    m_names.clear();
    m_rows.clear();
    m_pos = -1;
}

bool Recordset::requery()
{
    if (!m_loader || m_sql.isEmpty())
        return false;
    QStringList names;
    Rows rows;
    if (!m_loader(m_sql, names, rows))
        return false;
    open(m_sql, std::move(names), std::move(rows), m_loader);
    return true;
}

bool Recordset::isBOF() const
{
    return !m_open || m_rows.isEmpty() || m_pos < 0;
}

bool Recordset::isEOF() const
{
    return !m_open || m_rows.isEmpty() || m_pos >= m_rows.size();
}

void Recordset::moveFirst()
{
    if (m_open && !m_rows.isEmpty())
        m_pos = 0;
}

void Recordset::moveNext()
{
    if (m_open && m_pos < m_rows.size())
        ++m_pos;
}

void Recordset::movePrevious()
{
    if (m_open && m_pos >= 0)
        --m_pos;
}

void Recordset::moveLast()
{
    if (m_open && !m_rows.isEmpty())
        m_pos = int(m_rows.size()) - 1;
}

int Recordset::recordCount() const
{
    return m_open ? int(m_rows.size()) : 0;
}

QString Recordset::fieldName(int index) const
{
    return index >= 0 && index < m_names.size() ? m_names.at(index) : QString();
}

int Recordset::fieldIndex(const QString &name) const
{
    for (int i = 0; i < m_names.size(); ++i) {
        if (m_names.at(i).compare(name, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

QVariant Recordset::field(int index) const
{
    if (isBOF() || isEOF())
        return QVariant();
    const QList<QVariant> &row = m_rows.at(m_pos);
    return index >= 0 && index < row.size() ? row.at(index) : QVariant();
}

QVariant Recordset::field(const QString &name) const
{
    return field(fieldIndex(name));
}

namespace {
// A decimal column comes as a double; its text is never in exponent form ("3e+05" reads as 3).
QString textOf(const QVariant &value)
{
    if (value.typeId() == QMetaType::Double)
        return QString::number(value.toDouble(), 'f', QLocale::FloatingPointShortest);
    return value.toString();
}
} // namespace

QString Recordset::text(int index) const
{
    return textOf(field(index));
}

QString Recordset::text(const QString &name) const
{
    return textOf(field(name));
}

bool Recordset::find(const QString &criteria)
{
    if (!m_open || m_rows.isEmpty())
        return false;
    Criteria c;
    const int column = parseCriteria(criteria, c) ? fieldIndex(c.column) : -1;
    if (column < 0) {
        m_pos = int(m_rows.size());
        return false;
    }
    const QRegularExpression like = c.op == Op::Like ? likePattern(c.value) : QRegularExpression();
    for (int row = m_pos < 0 ? 0 : m_pos; row < m_rows.size(); ++row) {
        if (matches(column < m_rows.at(row).size() ? m_rows.at(row).at(column) : QVariant(), c, like)) {
            m_pos = row;
            return true;
        }
    }
    m_pos = int(m_rows.size());
    return false;
}
