#pragma once
// The general helper ("OrvikVelCom.TalvoCom"): requests made outside the browser, with the
// browser session's cookies, and the amount in words.
#include "host/HostService.h"

#include <QString>

class IGeneralHelper : public HostService
{
public:
    // Posts body to url and returns the reply's text, also when the site answers with an
    // error status; "#ERROR;" + the reason when no reply came. authorization: the value of
    // an Authorization header (empty: none); cookies: "name=value; name=value", sent as
    // they are; extraHeaders: further "Name: value" lines, CR LF between them.
    virtual QString HttpPost(const QString &url, const QString &authorization, const QString &cookies,
                             const QString &body, const QString &contentType, const QString &extraHeaders) = 0;
    // "One Thousand Five Hundred Only": the words without the leading "Rupees ", which the
    // callers write themselves. Empty for a text that is no amount.
    virtual QString ConvertToWord(const QString &amount) = 0;
};
