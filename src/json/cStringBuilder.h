#pragma once
// Gathers text piece by piece. The buffer is kept larger than the content and grows in
// whole chunks, so a long text costs one re-allocation per chunk instead of one per append.
#include <QString>
#include <QStringView>

class cStringBuilder
{
public:
    static constexpr qsizetype DefaultChunkSize = 8192;

    cStringBuilder() = default;

    qsizetype Length() const { return m_length; }
    qsizetype Capacity() const { return m_buffer.size(); }
    qsizetype ChunkSize() const { return m_chunkSize; }
    // Raises error 5 for a step below 1: growth would never finish.
    void setChunkSize(qsizetype chunkSize);

    QString toString() const;
    // Replaces the whole content; an empty text clears the builder.
    void setTheString(QStringView text);
    void Clear();

    void AppendNL(QStringView text);
    void Append(QStringView text);
    void Append(QChar c);
    void AppendByVal(QString text);
    // Zero-based index; error 9 when index is outside 0..Length.
    void Insert(qsizetype index, QStringView text);
    void InsertByVal(qsizetype index, QString text);
    // Error 9 when the range reaches past the content.
    void Remove(qsizetype index, qsizetype count);
    // One-based position of the first hit lying wholly in the content, at or after start;
    // 0 when there is none.
    qsizetype Find(QStringView text, qsizetype start = 1,
                   Qt::CaseSensitivity compare = Qt::CaseInsensitive) const;
    void HeapMinimize();

    // Content without a copy; valid until the next change.
    QStringView view() const { return QStringView(m_buffer).left(m_length); }

private:
    void reserveFor(qsizetype needed);

    QString m_buffer;   // size() is the capacity; past m_length only blanks
    qsizetype m_length = 0;
    qsizetype m_chunkSize = DefaultChunkSize;
};
