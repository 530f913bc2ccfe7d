#include "epay/PortalSecret.h"

#include "host/Settings.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sodium.h>
#include <sys/stat.h>
#include <unistd.h>

namespace PortalSecret {

namespace {

const QString SpecialTan = QStringLiteral("#?#TAN#?#");
const QString SpecialCommon = QStringLiteral("#?#COMMON#?#");

// Wiped when it goes.
class Key
{
public:
    Key() { sodium_memzero(bytes, sizeof bytes); }
    ~Key() { sodium_memzero(bytes, sizeof bytes); }
    Key(const Key &) = delete;
    Key &operator=(const Key &) = delete;
    unsigned char bytes[crypto_secretbox_KEYBYTES];
};

bool ready(QString *error)
{
    if (sodium_init() >= 0)
        return true;
    if (error)
        *error = QStringLiteral("The encryption library could not start.");
    return false;
}

bool readKey(Key &key, QString *error)
{
    const QString path = keyFile();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (error)
            *error = QStringLiteral("The stored portal password cannot be read: the key file %1 is missing. "
                                    "Copy the key file of the desk that saved the password there, or type the password again.")
                         .arg(QDir::toNativeSeparators(path));
        return false;
    }
    const QByteArray bytes = file.read(crypto_secretbox_KEYBYTES + 1);
    if (bytes.size() != int(crypto_secretbox_KEYBYTES)) {
        if (error)
            *error = QStringLiteral("The key file %1 is damaged: it must hold exactly %2 bytes.")
                         .arg(QDir::toNativeSeparators(path))
                         .arg(crypto_secretbox_KEYBYTES);
        return false;
    }
    memcpy(key.bytes, bytes.constData(), sizeof key.bytes);
    // A copy brought from another desk may carry looser rights; only the user reads it.
    const auto others = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
                        | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;
    if (file.permissions() & others)
        file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return true;
}

// Created with owner-only rights from the first byte; a desk that made it at the same
// moment wins and its key is read.
bool createKey(Key &key, QString *error)
{
    const QString path = keyFile();
    QDir().mkpath(QFileInfo(path).absolutePath());
    const QByteArray name = QFile::encodeName(path);
    const int fd = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (fd < 0) {
        if (errno == EEXIST)
            return readKey(key, error);
        if (error)
            *error = QStringLiteral("Cannot create the key file %1: %2")
                         .arg(QDir::toNativeSeparators(path), QString::fromLocal8Bit(strerror(errno)));
        return false;
    }
    randombytes_buf(key.bytes, sizeof key.bytes);
    const bool written = ::write(fd, key.bytes, sizeof key.bytes) == ssize_t(sizeof key.bytes) && ::fsync(fd) == 0;
    ::close(fd);
    if (!written) {
        ::unlink(name.constData());
        if (error)
            *error = QStringLiteral("Cannot write the key file %1.").arg(QDir::toNativeSeparators(path));
        return false;
    }
    return true;
}

bool stayAsItIs(const QString &password)
{
    return password.isEmpty() || password == SpecialTan || password == SpecialCommon;
}

} // namespace

QString keyFile()
{
    return Settings::configDir() + QStringLiteral("/portal.key");
}

QString mark()
{
    return QStringLiteral("$sbx1$");
}

bool isSealed(const QString &stored)
{
    return stored.startsWith(mark());
}

bool seal(const QString &password, QString &stored, QString *error)
{
    if (stayAsItIs(password)) {
        stored = password;
        return true;
    }
    Key key;
    if (!ready(error) || (!QFile::exists(keyFile()) ? !createKey(key, error) : !readKey(key, error)))
        return false;
    const QByteArray clear = password.toUtf8();
    QByteArray box(qsizetype(crypto_secretbox_NONCEBYTES + crypto_secretbox_MACBYTES) + clear.size(), '\0');
    auto *nonce = reinterpret_cast<unsigned char *>(box.data());
    randombytes_buf(nonce, crypto_secretbox_NONCEBYTES);
    crypto_secretbox_easy(nonce + crypto_secretbox_NONCEBYTES, reinterpret_cast<const unsigned char *>(clear.constData()),
                          quint64(clear.size()), nonce, key.bytes);
    stored = mark() + QString::fromLatin1(box.toBase64());
    return true;
}

bool open(const QString &stored, QString &password, QString *error)
{
    password.clear();
    if (!isSealed(stored)) {
        password = stored;
        return true;
    }
    Key key;
    if (!ready(error) || !readKey(key, error))
        return false;
    const QByteArray box = QByteArray::fromBase64(stored.mid(mark().size()).toLatin1());
    const qsizetype overhead = crypto_secretbox_NONCEBYTES + crypto_secretbox_MACBYTES;
    QByteArray clear(qMax<qsizetype>(box.size() - overhead, 0), '\0');
    const auto *nonce = reinterpret_cast<const unsigned char *>(box.constData());
    if (box.size() < overhead
        || crypto_secretbox_open_easy(reinterpret_cast<unsigned char *>(clear.data()), nonce + crypto_secretbox_NONCEBYTES,
                                      quint64(box.size() - qsizetype(crypto_secretbox_NONCEBYTES)), nonce, key.bytes) != 0) {
        if (error)
            *error = QStringLiteral("The stored portal password cannot be read with the key file %1: it was saved "
                                    "with another key. Copy the key file of the desk that saved the password there, "
                                    "or type the password again.")
                         .arg(QDir::toNativeSeparators(keyFile()));
        return false;
    }
    password = QString::fromUtf8(clear);
    sodium_memzero(clear.data(), size_t(clear.size()));
    return true;
}

} // namespace PortalSecret
