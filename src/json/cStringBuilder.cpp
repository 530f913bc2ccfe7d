#include "cStringBuilder.h"

#include "JsonRuntimeError.h"

#include <cstring>

void cStringBuilder::setChunkSize(qsizetype chunkSize)
{
    if (chunkSize < 1)
        throw JsonRuntimeError::fromNumber(JsonRuntimeError::InvalidCall);
    m_chunkSize = chunkSize;
}

QString cStringBuilder::toString() const
{
    if (m_length == 0)
        return QString();
    return m_buffer.left(m_length);
}

void cStringBuilder::setTheString(QStringView text)
{
    if (text.isEmpty()) {
        Clear();
        return;
    }
    reserveFor(text.size());
    QChar *data = m_buffer.data();
    std::memcpy(data, text.data(), size_t(text.size()) * sizeof(QChar));
    // Keep the "blanks past the length" promise when the new text is shorter.
    for (qsizetype i = text.size(); i < m_length; ++i)
        data[i] = QLatin1Char(' ');
    m_length = text.size();
}

void cStringBuilder::Clear()
{
    m_buffer = QString();
    m_length = 0;
}

void cStringBuilder::AppendNL(QStringView text)
{
    Append(text);
    Append(QStringView(u"\r\n"));
}

void cStringBuilder::Append(QStringView text)
{
    if (text.isEmpty())
        return;
    reserveFor(m_length + text.size());
    std::memcpy(m_buffer.data() + m_length, text.data(), size_t(text.size()) * sizeof(QChar));
    m_length += text.size();
}

void cStringBuilder::Append(QChar c)
{
    reserveFor(m_length + 1);
    m_buffer.data()[m_length++] = c;
}

void cStringBuilder::AppendByVal(QString text)
{
    Append(QStringView(text));
}

void cStringBuilder::Insert(qsizetype index, QStringView text)
{
    if (index < 0 || index > m_length)
        throw JsonRuntimeError::fromNumber(JsonRuntimeError::SubscriptOutOfRange);
    if (text.isEmpty())
        return;
    // The text may be a view into this very buffer; keep a copy before moving the tail.
    const QString copy = text.toString();
    reserveFor(m_length + copy.size());
    QChar *data = m_buffer.data();
    std::memmove(data + index + copy.size(), data + index,
                 size_t(m_length - index) * sizeof(QChar));
    std::memcpy(data + index, copy.constData(), size_t(copy.size()) * sizeof(QChar));
    m_length += copy.size();
}

void cStringBuilder::InsertByVal(qsizetype index, QString text)
{
    Insert(index, QStringView(text));
}

void cStringBuilder::Remove(qsizetype index, qsizetype count)
{
    if (index < 0 || index > m_length || count < 0 || count > m_length - index)
        throw JsonRuntimeError::fromNumber(JsonRuntimeError::SubscriptOutOfRange);
    if (count == 0)
        return;
    QChar *data = m_buffer.data();
    std::memmove(data + index, data + index + count,
                 size_t(m_length - index - count) * sizeof(QChar));
    for (qsizetype i = m_length - count; i < m_length; ++i)
        data[i] = QLatin1Char(' ');
    m_length -= count;
}

qsizetype cStringBuilder::Find(QStringView text, qsizetype start,
                               Qt::CaseSensitivity compare) const
{
    if (text.isEmpty())
        return 0;
    const qsizetype from = start < 1 ? 0 : start - 1;
    if (from >= m_length)
        return 0;
    const qsizetype hit = view().indexOf(text, from, compare);
    return hit < 0 ? 0 : hit + 1;
}

void cStringBuilder::HeapMinimize()
{
    const qsizetype capacity = m_buffer.size();
    if (capacity - m_length <= m_chunkSize)
        return;
    // Drop whole chunks until no more than one chunk stays free.
    const qsizetype chunks = (capacity - m_length - 1) / m_chunkSize;
    m_buffer.truncate(capacity - chunks * m_chunkSize);
    m_buffer.squeeze();
}

void cStringBuilder::reserveFor(qsizetype needed)
{
    const qsizetype capacity = m_buffer.size();
    if (needed <= capacity)
        return;
    const qsizetype chunks = (needed - capacity + m_chunkSize - 1) / m_chunkSize;
    // Beyond this no allocation can succeed; say so instead of aborting in the allocator.
    constexpr qsizetype Limit = qsizetype(1) << 40;
    if (chunks > (Limit - capacity) / m_chunkSize)
        throw JsonRuntimeError(7, QStringLiteral("Out of memory"));
    const qsizetype newCapacity = capacity + chunks * m_chunkSize;
    // The capacity grows in whole chunks; the memory behind it grows geometrically so that
    // building a very long text does not copy it once per chunk.
    if (newCapacity > m_buffer.capacity())
        m_buffer.reserve(qMax(newCapacity, qMin(Limit, 2 * capacity)));
    m_buffer.resize(newCapacity, QLatin1Char(' '));
}
