#pragma once
// `tdsforms-cli json FILE` and `tdsforms-cli script FILE [--answer TEXT]...`.
#include <QStringList>

// Arguments after the word "json": FILE, or "-" for standard input (UTF-8). Prints the
// parsed value as compact JSON and the parser's error text on standard error; exit status
// 0 when there was no error text, 1 otherwise, 2 for a usage or file error.
int cmdJson(const QStringList &args);

// Arguments after "script": FILE, then --answer TEXT for each input box in order (an input
// box with no answer left accepts its default). Prints the result of Eval; message boxes
// go to standard error as "title: message". A script that does not parse, nests too deep
// or produces too much prints its error on standard error instead, exit status 1.
int cmdScript(const QStringList &args);
