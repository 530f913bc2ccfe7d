#pragma once
// The online-action wrapper ("OrvikOlActWrapper.ClsBaseMain"): drives a browser for the
// portal flows. The forms say what to open, click and type, and after each step hand it a
// page locator ("@URL=...;@ELEMENT=...;@HTML=...") that the next page must match.
// Failures come back as False / a null element / a result other than "OK"; the detail is
// in LastError().
#include "host/HostService.h"

#include <QList>
#include <QMetaType>
#include <QString>
#include <QVariant>
#include <functional>
#include <memory>

class QLabel;
class IOnlineElement;
using OnlineElementPtr = std::shared_ptr<IOnlineElement>;   // null: Nothing

// An element of the page the browser shows. A stale element (the page changed) fails its
// operations; the reason is in the wrapper's LastError().
class IOnlineElement
{
public:
    virtual ~IOnlineElement() = default;

    virtual QString TagName() = 0;                            // upper case, "INPUT"
    virtual QString Text() = 0;                               // the rendered text; an option's label
    virtual QString getAttribute(const QString &name) = 0;    // "value": the current value
    virtual bool SendKeys(const QString &keys) = 0;           // types, as the user would
    virtual bool Click() = 0;

    virtual QString Value() = 0;
    virtual bool setValue(const QString &value) = 0;          // fires input and change
    virtual bool Checked() = 0;                               // check box, radio, option
    virtual bool setChecked(bool checked) = 0;

    // Lists (SELECT): the option elements in order, and the text of the chosen one.
    virtual QList<OnlineElementPtr> Options() = 0;
    virtual QString TextSelected() = 0;
    // Chooses the option with exactly this text; false (selection unchanged) when none has it.
    virtual bool setTextSelected(const QString &text) = 0;

    // Forms (FORM): the index-th field (from 0) named or identified so.
    virtual OnlineElementPtr Item(const QString &name, int index = 0) = 0;
};
Q_DECLARE_METATYPE(OnlineElementPtr)

// The page as a document (CreateHtmlDocument).
class IOnlineDocument
{
public:
    virtual ~IOnlineDocument() = default;
    // The index-th form (from 0) named or identified so; null when there is none.
    virtual OnlineElementPtr Forms(const QString &name, int index = 0) = 0;
    virtual OnlineElementPtr getElementById(const QString &id) = 0;
};

// The browser driver itself (objectSWC).
class IOnlineDriver
{
public:
    virtual ~IOnlineDriver() = default;
    virtual OnlineElementPtr findelementbyid(const QString &id) = 0;
    virtual QList<OnlineElementPtr> findelementsbytagname(const QString &tag) = 0;
    virtual QList<OnlineElementPtr> findelementsbyclassname(const QString &className) = 0;
    virtual OnlineElementPtr findElementByxpath(const QString &xpath) = 0;
    // The script's return value: texts, numbers, lists, maps, elements (OnlineElementPtr).
    // Elements may be passed in args as well. Invalid on failure.
    virtual QVariant executeScript(const QString &script, const QVariantList &args = {}) = 0;
    // One cookie of the page shown, empty when it has none of that name.
    virtual QString getCookieByName(const QString &name) = 0;
};

class IOnlineAction : public HostService
{
public:
    using ProgressCallback = std::function<void(const QString &)>;

    // hostText: handed over by the data object; browserKind: "GC" (Chromium, the only kind
    // driven here); tempFolder: where the browser keeps its profile; flag and mode: passed as
    // False and 1 by the forms. Starts the driver and the browser.
    virtual bool InitComponent(const QString &hostText, const QString &browserKind, const QString &tempFolder,
                               bool flag, int mode) = 0;
    // The NSDL hand-off's form: temporary folder and the title of a browser choice; there
    // is only one browser to choose.
    virtual bool InitComponent(const QString &tempFolder, const QString &selectionTitle) = 0;
    virtual QString ComponentType() const = 0;                // "GC"
    virtual QString LastError() const = 0;                    // "Incompatible Version !" on a version clash

    // Progress texts of the wrapper ("Starting Browser ...", "Waiting for Page ... 12").
    virtual void SetLblProg(ProgressCallback callback) = 0;
    // Writes them into a status label, elided to width pixels.
    void SetLblProg(QLabel *label, float width);

    // A single-page site (the e-filing portal): its clicks change routes within the page,
    // never post a form, and its controls answer the click event alone. Elements are then
    // clicked by their own click() and an action does not wait for a page to start leaving:
    // a pointer click and that wait cost the browser several round trips each. Off by
    // default (a site that posts forms); a new session keeps it.
    virtual void setSinglePageSite(bool on) = 0;

    // While waiting, a page matching this locator ends the wait at once as a failure.
    virtual void setErrorLocators(const QString &locator) = 0;
    virtual QString ErrorLocators() const = 0;

    virtual bool OpenURL(const QString &url) = 0;
    // "OK" when a page matching the locator shows; otherwise "ERROR" (the error locator
    // matched, a bad locator, no browser) or "TIMEOUT". The wait and the polling interval are
    // settings.
    virtual QString WaitForResponsePage(const QString &locator) = 0;
    virtual void WaitForSeconds(int seconds) = 0;             // window events go on meanwhile

    // The first element of that tag whose attributes have those values; several attributes
    // and values are separated by "," ("INPUT", "name,value", "MajorHead,0021").
    virtual OnlineElementPtr getElementByTagOthAttrib(const QString &tag, const QString &attributes,
                                                      const QString &values) = 0;
    virtual OnlineElementPtr getElementById(const QString &id) = 0;
    virtual bool ClickAndWait(const OnlineElementPtr &element) = 0;   // until the page settles
    virtual bool SubmitAndWait(const OnlineElementPtr &form) = 0;     // until the next page has loaded
    // Focuses the page (or the element) and waits for it to settle.
    virtual bool FocusAndWait(const OnlineElementPtr &element = {}) = 0;
    virtual bool runScriptAndWait(const QString &script, QVariant *result = nullptr) = 0;
    virtual std::shared_ptr<IOnlineDocument> CreateHtmlDocument() = 0;

    // Null before InitComponent and after Quit.
    virtual IOnlineDriver *objectSWC() = 0;
    // Every cookie of the page shown as "name=value; name=value", for requests made
    // outside the browser.
    virtual QString getCookiesITD() = 0;

    // Brings the browser to the user, who finishes by hand; the browser then stays open
    // when the wrapper goes.
    virtual void ShowBrowser() = 0;
    // Closes the browser and ends the session.
    virtual void Quit() = 0;
};
