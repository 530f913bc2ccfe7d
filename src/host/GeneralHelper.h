#pragma once
// The real general helper: Qt Network for the POST, the host's amount words.
#include "host/IGeneralHelper.h"

#include <memory>

class GeneralHelper : public IGeneralHelper
{
public:
    QString HttpPost(const QString &url, const QString &authorization, const QString &cookies, const QString &body,
                     const QString &contentType, const QString &extraHeaders) override;
    QString ConvertToWord(const QString &amount) override;
};

std::shared_ptr<HostService> createGeneralHelper();
