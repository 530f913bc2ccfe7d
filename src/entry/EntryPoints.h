#pragma once
// The four in-process entry points of the component, exported as plain C so a host can
// dlopen() the library and reach them with dlsym().
#include "entry/Forms.h"

#define TDSFORMS_EXPORT extern "C" __attribute__((visibility("default")))

// Result codes, as in-process servers report them.
enum : int { TDS_S_OK = 0, TDS_S_FALSE = 1, TDS_E_FAIL = -1, TDS_E_CLASSNOTAVAILABLE = -2 };

// The class identifier of Forms, and its programmatic name.
inline constexpr const char *kFormsClassId = "{6C1D6B0E-3F0A-4E5B-9C1E-2A5F0D7B1C26}";
inline constexpr const char *kFormsProgId = "TDSForms.Forms";

// What tdsforms_get_class_object hands out: it creates Forms objects.
class FormsClassFactory
{
public:
    virtual ~FormsClassFactory() = default;
    virtual Forms *createInstance(QString *error) = 0;   // nothing when start-up fails
    virtual void release() = 0;
};

// Writes the class entry to <config>/tdsforms/registry.ini.
TDSFORMS_EXPORT int tdsforms_register_server();
// Removes it.
TDSFORMS_EXPORT int tdsforms_unregister_server();
// *factory receives a FormsClassFactory for kFormsClassId.
TDSFORMS_EXPORT int tdsforms_get_class_object(const char *classId, void **factory);
// TDS_S_OK when no object of the component is alive, else TDS_S_FALSE.
TDSFORMS_EXPORT int tdsforms_can_unload_now();

// Where the entries are written.
QString tdsformsRegistryFile();
