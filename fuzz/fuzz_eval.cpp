// Any byte string as a dialog script: the interpreter must neither crash, leak nor hang.
#include "json/Dialogs.h"
#include "json/cJSONScript.h"

#include <cstdint>

namespace {

// Answers at once so that no box ever waits.
class ImmediateDialogs : public Dialogs
{
public:
    void inform(const QString &, const QString &, Icon) override {}
    bool askYesNo(const QString &, const QString &, Icon) override { return true; }
    QString input(const QString &, const QString &title, const QString &defaultText) override
    {
        return ++m_count % 2 ? defaultText : title;
    }

private:
    int m_count = 0;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString script = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    ImmediateDialogs dialogs;
    cJSONScript interpreter(&dialogs);
    // Twice on one object: the second run starts with the first one's variables.
    interpreter.Eval(script);
    interpreter.Eval(script);
    return 0;
}
