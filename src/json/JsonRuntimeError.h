#pragma once
// A run-time error of the JSON and scripting library, carrying the error number and
// description the callers report (9 "Subscript out of range", 6 "Overflow", ...).
#include <QString>
#include <exception>

class JsonRuntimeError : public std::exception
{
public:
    enum Number {
        InvalidCall = 5,
        Overflow = 6,
        SubscriptOutOfRange = 9,
        DivisionByZero = 11,
        TypeMismatch = 13,
    };

    JsonRuntimeError(int number, const QString &description)
        : m_number(number), m_description(description), m_what(description.toUtf8())
    {
    }

    static JsonRuntimeError fromNumber(int number);

    int number() const noexcept { return m_number; }
    const QString &description() const noexcept { return m_description; }
    const char *what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};

inline JsonRuntimeError JsonRuntimeError::fromNumber(int number)
{
    switch (number) {
    case InvalidCall:
        return {number, QStringLiteral("Invalid procedure call or argument")};
    case Overflow:
        return {number, QStringLiteral("Overflow")};
    case SubscriptOutOfRange:
        return {number, QStringLiteral("Subscript out of range")};
    case DivisionByZero:
        return {number, QStringLiteral("Division by zero")};
    case TypeMismatch:
        return {number, QStringLiteral("Type mismatch")};
    default:
        return {number, QStringLiteral("Application-defined or object-defined error")};
    }
}
