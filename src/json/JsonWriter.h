#pragma once
// Compact JSON text of a parsed value, as UTF-8 on one line: dictionaries in insertion
// order, numbers in canonical decimal form, control characters escaped.
#include "JsonValue.h"

#include <QByteArray>

QByteArray toCompactJson(const JsonValue &value);
