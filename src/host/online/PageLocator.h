#pragma once
// Page locators: ";"-joined clauses "@URL=address", "@ELEMENT=reference", "@HTML=text".
// A page matches when every clause holds. References: "ID:id", "FORM:form|field",
// "FORM:form,n|field", "FORM:form|field,n" (n counted from 0).
#include <QJsonArray>
#include <QJsonObject>
#include <QList>
#include <QString>
#include <QVariant>

struct ElementRef {
    enum class Kind { Id, FormField };
    Kind kind = Kind::Id;
    QString id;
    QString form;
    int formIndex = 0;
    QString field;
    int fieldIndex = 0;

    bool operator==(const ElementRef &) const = default;
};

struct PageLocator {
    bool hasUrl = false;
    QString url;
    bool hasElement = false;
    ElementRef element;
    bool hasHtml = false;
    QString html;   // as written, blanks and markup included
};

// What the browser reported for one poll: its address and, per locator, whether the
// element and the text were found (true when the locator has no such clause).
struct PageCheck {
    bool elementFound = true;
    bool htmlFound = true;
};
struct PageProbe {
    QString url;
    QList<PageCheck> checks;
};

enum class PageVerdict { Pending, Matched, ErrorPage };

namespace PageLocators {

// False and the reason in *error when the text breaks the grammar.
bool parse(const QString &text, PageLocator &locator, QString *error = nullptr);
bool parseElementRef(const QString &text, ElementRef &ref, QString *error = nullptr);

// The browser's address begins with the wanted one (scheme and host in any case); a
// locator "...PopServlet?rKey=" matches the page that carries the key's value.
bool urlMatches(const QString &wanted, const QString &current);

bool matches(const PageLocator &locator, const QString &url, const PageCheck &check);
// The error locator is judged first: an error page fails the wait even when the wanted
// locator matches too. probe.checks holds the wanted locator's check, then the error's.
PageVerdict judge(const PageLocator &wanted, const PageLocator *errorLocator, const PageProbe &probe);

// The reference as the argument of the finder script.
QJsonObject refToJson(const ElementRef &ref);
// A script function "tdsFind(ref)" returning the element or null.
QString finderScript();
// A script taking one argument, a list of {el, html} checks, and returning
// {url, checks: [[elementFound, htmlFound], ...]}.
QString probeScript();
QJsonArray probeArgument(const QList<const PageLocator *> &locators);
// Reads the probe script's result; false when it has not the expected shape.
bool readProbe(const QVariant &result, int locatorCount, PageProbe &probe);

} // namespace PageLocators
