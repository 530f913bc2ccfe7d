// The four in-process entry points, reached the way a host reaches them: dlopen + dlsym.
#include "TestRegistry.h"

#include "RecordingReportObject.h"
#include "TestDatabase.h"
#include "entry/EntryPoints.h"
#include "host/ServiceRegistry.h"
#include "shared/modbase.h"

#include <QFileInfo>
#include <QSettings>
#include <QTest>
#include <dlfcn.h>

class TestEntryPoints : public QObject
{
    Q_OBJECT

    using IntFn = int (*)();
    using GetFn = int (*)(const char *, void **);

    void *m_lib = nullptr;
    IntFn m_register = nullptr;
    IntFn m_unregister = nullptr;
    GetFn m_getClass = nullptr;
    IntFn m_canUnload = nullptr;

private slots:
    void initTestCase()
    {
        // A private data home and configuration folder, never the user's.
        TDS_DB_SETUP();
        const QByteArray path = QByteArray(TDS_LIB_DIR) + "/libtdsforms.so";
        m_lib = dlopen(path.constData(), RTLD_NOW | RTLD_LOCAL);
        QVERIFY2(m_lib, dlerror());
        m_register = reinterpret_cast<IntFn>(dlsym(m_lib, "tdsforms_register_server"));
        m_unregister = reinterpret_cast<IntFn>(dlsym(m_lib, "tdsforms_unregister_server"));
        m_getClass = reinterpret_cast<GetFn>(dlsym(m_lib, "tdsforms_get_class_object"));
        m_canUnload = reinterpret_cast<IntFn>(dlsym(m_lib, "tdsforms_can_unload_now"));
        QVERIFY(m_register && m_unregister && m_getClass && m_canUnload);
        RecordingReportObject::install();
        ServiceRegistry::registerBuiltins();
    }

    void cleanupTestCase()
    {
        modbase::resetForTests();
        RecordingReportObject::uninstall();
        if (m_lib)
            dlclose(m_lib);
    }

    void registerWritesTheClassEntryAndUnregisterRemovesIt()
    {
        QCOMPARE(m_register(), int(TDS_S_OK));
        QSettings reg(tdsformsRegistryFile(), QSettings::IniFormat);
        const QString group = QStringLiteral("CLSID/") + QString::fromLatin1(kFormsClassId);
        QCOMPARE(reg.value(group + QStringLiteral("/ProgID")).toString(), QStringLiteral("TDSForms.Forms"));
        const QString server = reg.value(group + QStringLiteral("/InprocServer")).toString();
        QVERIFY2(QFileInfo(server).fileName().startsWith(QStringLiteral("libtdsforms.so")), qPrintable(server));
        QVERIFY(QFileInfo::exists(server));
        QCOMPARE(reg.value(QStringLiteral("ProgID/TDSForms.Forms")).toString(), QString::fromLatin1(kFormsClassId));

        QCOMPARE(m_unregister(), int(TDS_S_OK));
        QSettings after(tdsformsRegistryFile(), QSettings::IniFormat);
        QVERIFY(!after.contains(group + QStringLiteral("/ProgID")));
        QVERIFY(!after.contains(QStringLiteral("ProgID/TDSForms.Forms")));
    }

    void unknownClassIsRefused()
    {
        void *factory = reinterpret_cast<void *>(0x1);
        QCOMPARE(m_getClass("{00000000-0000-0000-0000-000000000000}", &factory), int(TDS_E_CLASSNOTAVAILABLE));
        QCOMPARE(factory, nullptr);
        QCOMPARE(m_getClass(kFormsClassId, nullptr), int(TDS_E_FAIL));
    }

    void liveObjectsKeepTheLibraryLoaded()
    {
        QCOMPARE(m_canUnload(), int(TDS_S_OK));
        void *raw = nullptr;
        QCOMPARE(m_getClass(kFormsClassId, &raw), int(TDS_S_OK));
        QVERIFY(raw);
        auto *factory = static_cast<FormsClassFactory *>(raw);
        QCOMPARE(m_canUnload(), int(TDS_S_FALSE));

        QString error;
        Forms *forms = factory->createInstance(&error);
        QVERIFY2(forms, qPrintable(error));
        factory->release();
        QCOMPARE(m_canUnload(), int(TDS_S_FALSE));   // the Forms object is still alive

        QDialog *form = forms->Form15C();
        QVERIFY(form);
        delete forms;
        QCOMPARE(m_canUnload(), int(TDS_S_FALSE));   // a window it returned is still open
        delete form;
        QCOMPARE(m_canUnload(), int(TDS_S_OK));
    }
};

TDS_TEST(TestEntryPoints)
#include "TestEntryPoints.moc"
