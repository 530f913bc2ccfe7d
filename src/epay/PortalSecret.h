#pragma once
// Portal passwords at rest: sealed with libsodium's secret box under a 32-byte key kept in
// <configuration folder>/portal.key, readable only by the user and created on first use.
// Desks that share one database server share this file. The special values "#?#TAN#?#"
// and "#?#COMMON#?#" and the empty text are stored as they are.
#include <QString>

namespace PortalSecret {

QString keyFile();
// Sealed texts begin so; anything else is a special value or was stored before sealing.
QString mark();

bool isSealed(const QString &stored);
// The text to store for a password. False, with the reason, when the key file can be
// neither read nor created.
bool seal(const QString &password, QString &stored, QString *error = nullptr);
// The password from a stored text (an unsealed text is returned as it stands). False, with
// a message naming the key file, when it was sealed under another key or the file is
// missing; password is then empty.
bool open(const QString &stored, QString &password, QString *error = nullptr);

} // namespace PortalSecret
