#include "host/ErrorLog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTextStream>

namespace ErrorLog {

QString fileName()
{
    return QStringLiteral("ZeltLogger.log");
}

QString scrub(const QString &text)
{
    static const QRegularExpression url(QStringLiteral("(mysql://[^:/@\\s]*:)[^@\\s]*@"));
    static const QRegularExpression kv(
        QStringLiteral("((?:password|passwd|pwd|token)\\s*[=:]\\s*)('[^']*'|\"[^\"]*\"|\\S+)"),
        QRegularExpression::CaseInsensitiveOption);
    QString out = text;
    out.replace(url, QStringLiteral("\\1***@"));
    out.replace(kv, QStringLiteral("\\1***"));
    return out;
}

void append(const QString &folder, long number, const QString &description,
            const QString &source, const QString &location)
{
    QDir().mkpath(folder);
    QFile file(QDir(folder).filePath(fileName()));
    if (!file.open(QIODevice::Append | QIODevice::Text))
        return;
    QString line = QDateTime::currentDateTime().toString(QStringLiteral("dd/MM/yyyy hh:mm:ss"));
    line += QLatin1Char('\t') + QString::number(number);
    line += QLatin1Char('\t') + scrub(description).simplified();
    line += QLatin1Char('\t') + source;
    line += QLatin1Char('\t') + location;
    QTextStream(&file) << line << '\n';
}

} // namespace ErrorLog
