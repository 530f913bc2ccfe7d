#include "host/online/PageLocator.h"

#include <QRegularExpression>
#include <QUrl>
#include <QVariantMap>

namespace PageLocators {

namespace {
bool fail(QString *error, const QString &why)
{
    if (error)
        *error = why;
    return false;
}

// "name" or "name,n"; the index is a plain non-negative number.
bool splitIndexed(const QString &text, QString &name, int &index)
{
    const qsizetype comma = text.lastIndexOf(QLatin1Char(','));
    name = comma < 0 ? text : text.left(comma);
    index = 0;
    if (comma >= 0) {
        static const QRegularExpression digits(QStringLiteral("^\\d{1,6}$"));
        const QString number = text.mid(comma + 1);
        if (!digits.match(number).hasMatch())
            return false;
        index = number.toInt();
    }
    return !name.isEmpty();
}

QString normalisedUrl(const QString &text)
{
    QUrl url(text);
    if (!url.isValid() || url.scheme().isEmpty())
        return text;
    if ((url.scheme() == QLatin1String("https") && url.port() == 443)
        || (url.scheme() == QLatin1String("http") && url.port() == 80))
        url.setPort(-1);
    // Without a path, QUrl writes none while the browser writes "/".
    if (url.path().isEmpty())
        url.setPath(QStringLiteral("/"));
    return url.toString(QUrl::FullyEncoded);
}
} // namespace

bool parseElementRef(const QString &text, ElementRef &ref, QString *error)
{
    ElementRef r;
    if (text.startsWith(QLatin1String("ID:"))) {
        r.kind = ElementRef::Kind::Id;
        r.id = text.mid(3);
        if (r.id.isEmpty())
            return fail(error, QStringLiteral("Element reference without an id: \"%1\"").arg(text));
        ref = r;
        return true;
    }
    if (!text.startsWith(QLatin1String("FORM:")))
        return fail(error, QStringLiteral("Element reference is neither ID: nor FORM: \"%1\"").arg(text));
    const QString rest = text.mid(5);
    const qsizetype bar = rest.indexOf(QLatin1Char('|'));
    if (bar < 0 || rest.indexOf(QLatin1Char('|'), bar + 1) >= 0)
        return fail(error, QStringLiteral("Form reference needs one \"|\" between form and field: \"%1\"").arg(text));
    r.kind = ElementRef::Kind::FormField;
    if (!splitIndexed(rest.left(bar), r.form, r.formIndex) || !splitIndexed(rest.mid(bar + 1), r.field, r.fieldIndex))
        return fail(error, QStringLiteral("Bad form or field in \"%1\"").arg(text));
    ref = r;
    return true;
}

bool parse(const QString &text, PageLocator &locator, QString *error)
{
    if (text.isEmpty())
        return fail(error, QStringLiteral("Empty page locator"));
    if (!text.startsWith(QLatin1Char('@')))
        return fail(error, QStringLiteral("Page locator must begin with \"@\": \"%1\"").arg(text));
    // A clause ends only where ";@KEY=" follows: an @HTML text may hold ";" (entities) itself.
    static const QRegularExpression boundary(QStringLiteral(";(?=@[A-Za-z]+=)"));
    PageLocator result;
    for (const QString &clause : text.split(boundary)) {
        const qsizetype eq = clause.indexOf(QLatin1Char('='));
        const QString key = eq < 0 ? clause : clause.left(eq);
        const QString value = eq < 0 ? QString() : clause.mid(eq + 1);
        if (eq < 0 || value.isEmpty())
            return fail(error, QStringLiteral("Clause without a value: \"%1\"").arg(clause));
        if (key == QLatin1String("@URL")) {
            if (result.hasUrl)
                return fail(error, QStringLiteral("More than one @URL clause"));
            result.hasUrl = true;
            result.url = value;
        } else if (key == QLatin1String("@ELEMENT")) {
            if (result.hasElement)
                return fail(error, QStringLiteral("More than one @ELEMENT clause"));
            if (!parseElementRef(value, result.element, error))
                return false;
            result.hasElement = true;
        } else if (key == QLatin1String("@HTML")) {
            if (result.hasHtml)
                return fail(error, QStringLiteral("More than one @HTML clause"));
            result.hasHtml = true;
            result.html = value;
        } else {
            return fail(error, QStringLiteral("Unknown clause \"%1\" (keys: @URL, @ELEMENT, @HTML)").arg(key));
        }
    }
    locator = result;
    return true;
}

bool urlMatches(const QString &wanted, const QString &current)
{
    return normalisedUrl(current).startsWith(normalisedUrl(wanted));
}

bool matches(const PageLocator &locator, const QString &url, const PageCheck &check)
{
    if (locator.hasUrl && !urlMatches(locator.url, url))
        return false;
    return (!locator.hasElement || check.elementFound) && (!locator.hasHtml || check.htmlFound);
}

PageVerdict judge(const PageLocator &wanted, const PageLocator *errorLocator, const PageProbe &probe)
{
    if (errorLocator && probe.checks.size() > 1 && matches(*errorLocator, probe.url, probe.checks.at(1)))
        return PageVerdict::ErrorPage;
    if (!probe.checks.isEmpty() && matches(wanted, probe.url, probe.checks.at(0)))
        return PageVerdict::Matched;
    return PageVerdict::Pending;
}

QJsonObject refToJson(const ElementRef &ref)
{
    if (ref.kind == ElementRef::Kind::Id)
        return QJsonObject{{QStringLiteral("id"), ref.id}};
    return QJsonObject{{QStringLiteral("form"), ref.form},
                       {QStringLiteral("formIndex"), ref.formIndex},
                       {QStringLiteral("field"), ref.field},
                       {QStringLiteral("fieldIndex"), ref.fieldIndex}};
}

QString finderScript()
{
    // Forms and fields are found by name or id, as the old document model did.
    return QStringLiteral(
        "function tdsNamed(list, name) {"
        "  return Array.prototype.filter.call(list, function (e) {"
        "    return e.getAttribute('name') === name || e.id === name; });"
        "}"
        "function tdsFind(r) {"
        "  if (!r) return null;"
        "  if (r.id !== undefined) return document.getElementById(r.id);"
        "  var f = tdsNamed(document.forms, r.form)[r.formIndex];"
        "  if (!f) return null;"
        "  return tdsNamed(f.elements, r.field)[r.fieldIndex] || null;"
        "}");
}

QString probeScript()
{
    return finderScript() + QStringLiteral(
        "var checks = arguments[0], out = [], html = null;"
        "for (var i = 0; i < checks.length; ++i) {"
        "  var c = checks[i], found = true, text = true;"
        "  if (c.el) found = tdsFind(c.el) !== null;"
        "  if (typeof c.html === 'string') {"
        "    if (html === null) html = document.documentElement ? document.documentElement.outerHTML : '';"
        "    text = html.indexOf(c.html) >= 0;"
        "  }"
        "  out.push([found, text]);"
        "}"
        "return {url: location.href, checks: out};");
}

QJsonArray probeArgument(const QList<const PageLocator *> &locators)
{
    QJsonArray checks;
    for (const PageLocator *l : locators) {
        QJsonObject c;
        c.insert(QStringLiteral("el"), l->hasElement ? QJsonValue(refToJson(l->element)) : QJsonValue());
        c.insert(QStringLiteral("html"), l->hasHtml ? QJsonValue(l->html) : QJsonValue());
        checks.append(c);
    }
    return checks;
}

bool readProbe(const QVariant &result, int locatorCount, PageProbe &probe)
{
    const QVariantMap map = result.toMap();
    const QVariantList checks = map.value(QStringLiteral("checks")).toList();
    if (!map.contains(QStringLiteral("url")) || checks.size() != locatorCount)
        return false;
    probe.url = map.value(QStringLiteral("url")).toString();
    probe.checks.clear();
    for (const QVariant &c : checks) {
        const QVariantList pair = c.toList();
        if (pair.size() != 2)
            return false;
        probe.checks.append(PageCheck{pair.at(0).toBool(), pair.at(1).toBool()});
    }
    return true;
}

} // namespace PageLocators
