#include "Decimal.h"

#include "JsonRuntimeError.h"

#include <QtAlgorithms>

#include <algorithm>

namespace {

// Unsigned whole number wide enough for every intermediate: a 96-bit value scaled by
// 10^56 (division) or a 96x96-bit product.
struct Big
{
    static constexpr int Limbs = 12;
    quint32 w[Limbs] = {};

    static Big fromDecimal(const Decimal &d)
    {
        Big b;
        b.w[0] = d.lo();
        b.w[1] = d.mid();
        b.w[2] = d.hi();
        return b;
    }

    bool isZero() const
    {
        for (quint32 x : w)
            if (x)
                return false;
        return true;
    }

    bool fits96() const
    {
        for (int i = 3; i < Limbs; ++i)
            if (w[i])
                return false;
        return true;
    }

    int bitLength() const
    {
        for (int i = Limbs - 1; i >= 0; --i)
            if (w[i])
                return i * 32 + (32 - qCountLeadingZeroBits(w[i]));
        return 0;
    }

    bool bit(int i) const { return (w[i / 32] >> (i % 32)) & 1u; }

    void mulSmall(quint32 m)
    {
        quint64 carry = 0;
        for (quint32 &x : w) {
            const quint64 t = quint64(x) * m + carry;
            x = quint32(t);
            carry = t >> 32;
        }
    }

    void addSmall(quint32 a)
    {
        quint64 carry = a;
        for (int i = 0; i < Limbs && carry; ++i) {
            const quint64 t = quint64(w[i]) + carry;
            w[i] = quint32(t);
            carry = t >> 32;
        }
    }

    quint32 divSmall(quint32 d)
    {
        quint64 rem = 0;
        for (int i = Limbs - 1; i >= 0; --i) {
            const quint64 cur = (rem << 32) | w[i];
            w[i] = quint32(cur / d);
            rem = cur % d;
        }
        return quint32(rem);
    }

    void mulPow10(int k)
    {
        for (; k >= 9; k -= 9)
            mulSmall(1000000000u);
        static constexpr quint32 Small[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000,
                                            100000000};
        if (k > 0)
            mulSmall(Small[k]);
    }

    static Big pow10(int k)
    {
        Big b;
        b.w[0] = 1;
        b.mulPow10(k);
        return b;
    }

    static int compare(const Big &a, const Big &b)
    {
        for (int i = Limbs - 1; i >= 0; --i)
            if (a.w[i] != b.w[i])
                return a.w[i] < b.w[i] ? -1 : 1;
        return 0;
    }

    void add(const Big &o)
    {
        quint64 carry = 0;
        for (int i = 0; i < Limbs; ++i) {
            const quint64 t = quint64(w[i]) + o.w[i] + carry;
            w[i] = quint32(t);
            carry = t >> 32;
        }
    }

    // Requires *this >= o.
    void sub(const Big &o)
    {
        qint64 borrow = 0;
        for (int i = 0; i < Limbs; ++i) {
            qint64 t = qint64(w[i]) - o.w[i] - borrow;
            borrow = t < 0 ? 1 : 0;
            w[i] = quint32(t + (borrow << 32));
        }
    }

    void shl1()
    {
        for (int i = Limbs - 1; i > 0; --i)
            w[i] = (w[i] << 1) | (w[i - 1] >> 31);
        w[0] <<= 1;
    }

    static Big mul(const Big &a, const Big &b)
    {
        Big r;
        for (int i = 0; i < Limbs; ++i) {
            if (!a.w[i])
                continue;
            quint64 carry = 0;
            for (int j = 0; i + j < Limbs; ++j) {
                const quint64 t = quint64(a.w[i]) * b.w[j] + r.w[i + j] + carry;
                r.w[i + j] = quint32(t);
                carry = t >> 32;
            }
        }
        return r;
    }

    // Binary long division; only used off the fast paths.
    static void divMod(const Big &n, const Big &d, Big &q, Big &r)
    {
        q = Big();
        r = Big();
        for (int i = n.bitLength() - 1; i >= 0; --i) {
            r.shl1();
            r.w[0] |= n.bit(i) ? 1u : 0u;
            if (compare(r, d) >= 0) {
                r.sub(d);
                q.w[i / 32] |= 1u << (i % 32);
            }
        }
    }
};

// n / d rounded to a whole number. `sticky` says the true dividend is a little larger than n.
Big roundedQuotient(const Big &n, const Big &d, Decimal::Rounding mode, bool sticky = false)
{
    Big q, r;
    Big::divMod(n, d, q, r);
    Big twice = r;
    twice.shl1();
    const int c = Big::compare(twice, d);
    const bool up = c > 0
        || (c == 0 && (sticky || mode == Decimal::Rounding::HalfAwayFromZero || (q.w[0] & 1u)));
    if (up)
        q.addSmall(1);
    return q;
}

Big roundedDivPow10(const Big &n, int k, Decimal::Rounding mode, bool sticky = false)
{
    if (k == 0)
        return n;
    return roundedQuotient(n, Big::pow10(k), mode, sticky);
}

Decimal makeDecimal(const Big &b, bool negative, int scale)
{
    return Decimal::fromParts(b.w[0], b.w[1], b.w[2], negative, scale);
}

// Rounds n at `scale` down to at most 28 places and into 96 bits, or raises overflow.
Decimal normalised(const Big &n, bool negative, int scale, bool sticky = false)
{
    int k = std::max(0, scale - Decimal::MaxScale);
    // More than 58 digits dropped leaves nothing: the value is below one unit of 10^-28.
    if (k > 60)
        return makeDecimal(Big(), negative, Decimal::MaxScale);
    for (;; ++k) {
        if (k > scale)
            throw JsonRuntimeError::fromNumber(JsonRuntimeError::Overflow);
        const Big q = roundedDivPow10(n, k, Decimal::Rounding::HalfEven, sticky);
        if (q.fits96())
            return makeDecimal(q, negative, scale - k);
    }
}

bool isDigit(QChar c)
{
    return c.unicode() >= '0' && c.unicode() <= '9';
}

} // namespace

Decimal::Decimal(qint64 value)
{
    const quint64 magnitude = value < 0 ? quint64(0) - quint64(value) : quint64(value);
    m_lo = quint32(magnitude);
    m_mid = quint32(magnitude >> 32);
    m_negative = value < 0;
}

Decimal Decimal::fromParts(quint32 lo, quint32 mid, quint32 hi, bool negative, int scale)
{
    Decimal d;
    d.m_lo = lo;
    d.m_mid = mid;
    d.m_hi = hi;
    d.m_negative = negative;
    d.m_scale = quint8(std::clamp(scale, 0, MaxScale));
    return d;
}

Decimal Decimal::fromString(QStringView text, Status *status)
{
    auto fail = [status](Status s) {
        if (status)
            *status = s;
        return Decimal();
    };
    const QChar *p = text.data();
    const QChar *end = p + text.size();
    bool negative = false;
    if (p < end && (*p == u'+' || *p == u'-')) {
        negative = *p == u'-';
        ++p;
    }

    // Significant digits beyond what can matter are dropped; `sticky` remembers whether
    // any of them was non-zero so that rounding of a tie still comes out right.
    constexpr int KeptDigits = 60;
    quint64 fast = 0;
    Big digits;
    int kept = 0;
    int droppedIntDigits = 0;
    int keptFracDigits = 0;
    bool sticky = false;
    bool anyDigit = false;
    bool inFraction = false;
    for (; p < end; ++p) {
        if (*p == u'.') {
            if (inFraction)
                return fail(Status::Invalid);
            inFraction = true;
            continue;
        }
        if (!isDigit(*p))
            break;
        anyDigit = true;
        const quint32 v = p->unicode() - '0';
        if (kept == 0 && v == 0) {
            // Leading zeros carry no digits, but count the places they stand for.
            if (inFraction)
                ++keptFracDigits;
            continue;
        }
        if (kept < KeptDigits) {
            if (kept < 19) {
                fast = fast * 10 + v;
            } else {
                if (kept == 19) {
                    digits.w[0] = quint32(fast);
                    digits.w[1] = quint32(fast >> 32);
                }
                digits.mulSmall(10);
                digits.addSmall(v);
            }
            ++kept;
            if (inFraction)
                ++keptFracDigits;
        } else {
            sticky = sticky || v != 0;
            if (!inFraction)
                ++droppedIntDigits;
        }
    }
    if (!anyDigit)
        return fail(Status::Invalid);

    int exponent = 0;
    if (p < end && (*p == u'e' || *p == u'E')) {
        ++p;
        bool expNegative = false;
        if (p < end && (*p == u'+' || *p == u'-')) {
            expNegative = *p == u'-';
            ++p;
        }
        if (p == end || !isDigit(*p))
            return fail(Status::Invalid);
        for (; p < end && isDigit(*p); ++p)
            exponent = std::min(exponent * 10 + int(p->unicode() - '0'), 1000000);
        if (expNegative)
            exponent = -exponent;
    }
    if (p != end)
        return fail(Status::Invalid);

    if (status)
        *status = Status::Ok;
    const int exp10 = exponent + droppedIntDigits - keptFracDigits;
    if (kept == 0)
        return fromParts(0, 0, 0, negative, std::clamp(-exp10, 0, MaxScale));

    // The common case: up to 19 digits and at most 28 places, no rounding needed.
    if (kept <= 19 && exp10 <= 0 && exp10 >= -MaxScale)
        return fromParts(quint32(fast), quint32(fast >> 32), 0, negative, -exp10);

    if (kept <= 19) {
        digits.w[0] = quint32(fast);
        digits.w[1] = quint32(fast >> 32);
    }
    try {
        if (exp10 >= 0) {
            // 10^29 already exceeds the 96-bit range.
            if (kept + exp10 > 29)
                return fail(Status::Overflow);
            digits.mulPow10(exp10);
            if (!digits.fits96())
                return fail(Status::Overflow);
            return makeDecimal(digits, negative, 0);
        }
        return normalised(digits, negative, -exp10, sticky);
    } catch (const JsonRuntimeError &) {
        return fail(Status::Overflow);
    }
}

Decimal Decimal::parse(QStringView text)
{
    Status status = Status::Ok;
    const Decimal d = fromString(text, &status);
    if (status == Status::Invalid)
        throw JsonRuntimeError::fromNumber(JsonRuntimeError::TypeMismatch);
    if (status == Status::Overflow)
        throw JsonRuntimeError::fromNumber(JsonRuntimeError::Overflow);
    return d;
}

QString Decimal::toString() const
{
    if (isZero())
        return QStringLiteral("0");
    // At most 29 digits; gather them from the low end.
    char16_t buf[40];
    int pos = 40;
    Big b = Big::fromDecimal(*this);
    while (!b.isZero()) {
        quint32 chunk = b.divSmall(1000000000u);
        const bool last = b.isZero();
        for (int i = 0; i < 9 && (!last || chunk); ++i) {
            buf[--pos] = char16_t(u'0' + chunk % 10);
            chunk /= 10;
        }
    }
    int digitCount = 40 - pos;
    while (digitCount <= m_scale) {
        buf[--pos] = u'0';
        ++digitCount;
    }
    const int intDigits = digitCount - m_scale;
    int fracDigits = m_scale;
    while (fracDigits > 0 && buf[pos + intDigits + fracDigits - 1] == u'0')
        --fracDigits;

    QString out;
    out.reserve(digitCount + 2);
    if (m_negative)
        out += QLatin1Char('-');
    out.append(reinterpret_cast<const QChar *>(buf + pos), intDigits);
    if (fracDigits > 0) {
        out += QLatin1Char('.');
        out.append(reinterpret_cast<const QChar *>(buf + pos + intDigits), fracDigits);
    }
    return out;
}

QString Decimal::toFixed(int places) const
{
    places = std::clamp(places, 0, MaxScale);
    Decimal r = round(places, Rounding::HalfAwayFromZero);
    QString text = r.abs().toString();
    const qsizetype dot = text.indexOf(QLatin1Char('.'));
    const qsizetype have = dot < 0 ? 0 : text.size() - dot - 1;
    if (places > 0) {
        if (dot < 0)
            text += QLatin1Char('.');
        text += QString(places - have, QLatin1Char('0'));
    }
    if (r.isNegative())
        text.prepend(QLatin1Char('-'));
    return text;
}

double Decimal::toDouble() const
{
    return toString().toDouble();
}

Decimal Decimal::round(int places, Rounding mode) const
{
    places = std::max(places, 0);
    if (places >= m_scale)
        return *this;
    const Big q = roundedDivPow10(Big::fromDecimal(*this), m_scale - places, mode);
    return makeDecimal(q, m_negative, places);
}

Decimal Decimal::abs() const
{
    Decimal d = *this;
    d.m_negative = false;
    return d;
}

Decimal Decimal::operator-() const
{
    Decimal d = *this;
    d.m_negative = !m_negative;
    return d;
}

int Decimal::compare(const Decimal &other) const
{
    const bool az = isZero();
    const bool bz = other.isZero();
    if (az && bz)
        return 0;
    const bool an = isNegative();
    const bool bn = other.isNegative();
    if (an != bn)
        return an ? -1 : 1;
    const int s = std::max(m_scale, other.m_scale);
    Big a = Big::fromDecimal(*this);
    Big b = Big::fromDecimal(other);
    a.mulPow10(s - m_scale);
    b.mulPow10(s - other.m_scale);
    const int c = Big::compare(a, b);
    return an ? -c : c;
}

Decimal operator+(const Decimal &a, const Decimal &b)
{
    const int s = std::max(a.scale(), b.scale());
    Big x = Big::fromDecimal(a);
    Big y = Big::fromDecimal(b);
    x.mulPow10(s - a.scale());
    y.mulPow10(s - b.scale());
    const bool xn = a.isNegative();
    const bool yn = b.isNegative();
    if (xn == yn) {
        x.add(y);
        return normalised(x, xn && !x.isZero(), s);
    }
    const int c = Big::compare(x, y);
    if (c == 0)
        return makeDecimal(Big(), false, s);
    if (c > 0) {
        x.sub(y);
        return normalised(x, xn, s);
    }
    y.sub(x);
    return normalised(y, yn, s);
}

Decimal operator-(const Decimal &a, const Decimal &b)
{
    return a + (-b);
}

Decimal operator*(const Decimal &a, const Decimal &b)
{
    const Big p = Big::mul(Big::fromDecimal(a), Big::fromDecimal(b));
    const bool negative = a.isNegative() != b.isNegative() && !p.isZero();
    if (p.isZero())
        return makeDecimal(p, false, std::min(a.scale() + b.scale(), Decimal::MaxScale));
    return normalised(p, negative, a.scale() + b.scale());
}

Decimal operator/(const Decimal &a, const Decimal &b)
{
    if (b.isZero())
        throw JsonRuntimeError::fromNumber(JsonRuntimeError::DivisionByZero);
    if (a.isZero())
        return Decimal();
    const bool negative = a.isNegative() != b.isNegative();
    const Big x = Big::fromDecimal(a);
    const Big y = Big::fromDecimal(b);
    // Take the most places that still fit in 96 bits, then drop trailing zeros.
    for (int s = Decimal::MaxScale; s >= 0; --s) {
        const int e = s + b.scale() - a.scale();
        Big n = x;
        Big d = y;
        if (e >= 0)
            n.mulPow10(e);
        else
            d.mulPow10(-e);
        Big q = roundedQuotient(n, d, Decimal::Rounding::HalfEven);
        if (!q.fits96())
            continue;
        int scale = s;
        while (scale > 0) {
            Big t = q;
            if (t.divSmall(10) != 0)
                break;
            q = t;
            --scale;
        }
        return makeDecimal(q, negative && !q.isZero(), scale);
    }
    throw JsonRuntimeError::fromNumber(JsonRuntimeError::Overflow);
}
