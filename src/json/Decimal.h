#pragma once
// An exact decimal number: a 96-bit whole number scaled down by a power of ten from 0 to 28.
// JSON numbers and amounts are kept in it so that "0.1" stays 0.1, never a binary fraction.
#include <QString>
#include <QStringView>
#include <QtGlobal>

#include <compare>

class Decimal
{
public:
    static constexpr int MaxScale = 28;

    enum class Status { Ok, Invalid, Overflow };
    enum class Rounding { HalfEven, HalfAwayFromZero };

    constexpr Decimal() = default;
    explicit Decimal(qint64 value);

    // Text as "-1.50", "+2", ".5", "1e3", "2.5E-3". On failure returns zero and reports
    // Invalid (a text that is no number) or Overflow (beyond the 96-bit range).
    static Decimal fromString(QStringView text, Status *status = nullptr);
    // As fromString, raising error 13 or 6 instead of reporting a status.
    static Decimal parse(QStringView text);
    // The whole number (lo, mid, hi from low to high 32 bits), its sign and the scale.
    static Decimal fromParts(quint32 lo, quint32 mid, quint32 hi, bool negative, int scale);

    // Canonical text: optional "-", the digits, and the fraction only when it is not
    // zero, without trailing zeros or exponent. Zero is always "0".
    QString toString() const;
    // Exactly `places` decimals, halves rounded away from zero (as amounts are shown).
    QString toFixed(int places) const;
    double toDouble() const;

    bool isZero() const { return (m_lo | m_mid | m_hi) == 0; }
    bool isNegative() const { return m_negative && !isZero(); }
    int scale() const { return m_scale; }

    Decimal round(int places, Rounding mode = Rounding::HalfEven) const;
    Decimal abs() const;
    Decimal operator-() const;

    // Arithmetic raises error 6 (overflow) or 11 (division by zero); results are rounded
    // to at most 28 decimal places, halves to even.
    friend Decimal operator+(const Decimal &a, const Decimal &b);
    friend Decimal operator-(const Decimal &a, const Decimal &b);
    friend Decimal operator*(const Decimal &a, const Decimal &b);
    friend Decimal operator/(const Decimal &a, const Decimal &b);
    Decimal &operator+=(const Decimal &o) { return *this = *this + o; }
    Decimal &operator-=(const Decimal &o) { return *this = *this - o; }
    Decimal &operator*=(const Decimal &o) { return *this = *this * o; }
    Decimal &operator/=(const Decimal &o) { return *this = *this / o; }

    // Numeric comparison: 1.50 equals 1.5, -0 equals 0.
    int compare(const Decimal &other) const;
    friend bool operator==(const Decimal &a, const Decimal &b) { return a.compare(b) == 0; }
    friend std::strong_ordering operator<=>(const Decimal &a, const Decimal &b)
    {
        const int c = a.compare(b);
        return c < 0 ? std::strong_ordering::less
                     : (c > 0 ? std::strong_ordering::greater : std::strong_ordering::equal);
    }

    quint32 lo() const { return m_lo; }
    quint32 mid() const { return m_mid; }
    quint32 hi() const { return m_hi; }

private:
    quint32 m_lo = 0;
    quint32 m_mid = 0;
    quint32 m_hi = 0;
    quint8 m_scale = 0;
    bool m_negative = false;
};
