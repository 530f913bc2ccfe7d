// Parses one generated document of about 5 MB with ParseJson and with
// QJsonDocument::fromJson and prints both throughputs; the last line is ratio=ours/Qt's.
#include "json/JSON.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>

#include <cstdio>
#include <limits>

namespace {

QByteArray generateDocument(qsizetype targetBytes)
{
    static const char *const Words[] = {"DEMO", "TRADERS", "Pvt", "Ltd", "Mumbai", "Pune",
                                        "Chennai", "interest", "rent", "commission"};
    QRandomGenerator rng(20240401);
    auto word = [&] { return QByteArray(Words[rng.bounded(10)]); };
    QByteArray doc;
    doc.reserve(targetBytes + 4096);
    doc.append("[\n");
    for (int i = 0; doc.size() < targetBytes; ++i) {
        if (i)
            doc.append(",\n");
        doc.append("  {\"id\": ").append(QByteArray::number(i));
        doc.append(", \"name\": \"").append(word()).append(' ').append(word());
        doc.append(" \\\"quoted\\\" caf\\u00e9\\n\"");
        doc.append(", \"pan\": \"ABCDE").append(QByteArray::number(1000 + rng.bounded(9000)));
        doc.append("F\", \"amount\": ").append(QByteArray::number(rng.bounded(10000000)));
        doc.append('.').append(QByteArray::number(10 + rng.bounded(90)));
        doc.append(", \"rate\": ").append(QByteArray::number(rng.bounded(100))).append("e-2");
        doc.append(", \"paid\": ").append(rng.bounded(2) ? "true" : "false");
        doc.append(", \"remark\": null");
        doc.append(", \"months\": [");
        for (int m = 0; m < 6; ++m) {
            if (m)
                doc.append(", ");
            doc.append(QByteArray::number(rng.bounded(100000)));
        }
        doc.append("], \"address\": {\"city\": \"").append(word());
        doc.append("\", \"path\": \"C:\\\\Data\\\\").append(word());
        doc.append("\", \"pin\": \"").append(QByteArray::number(400000 + rng.bounded(99999)));
        doc.append("\"}, \"tags\": [\"").append(word()).append("\", \"").append(word());
        doc.append("\"]}");
    }
    doc.append("\n]\n");
    return doc;
}

template<typename F>
double bestSeconds(int runs, F &&parse)
{
    double best = std::numeric_limits<double>::max();
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer timer;
        timer.start();
        parse();
        best = std::min(best, double(timer.nsecsElapsed()) / 1e9);
    }
    return best;
}

} // namespace

int main()
{
    const QByteArray bytes = generateDocument(5 * 1024 * 1024);
    const QString text = QString::fromUtf8(bytes);
    const double megabytes = double(bytes.size()) / (1024.0 * 1024.0);
    constexpr int Runs = 7;

    // Both parsers must accept the document, or the comparison means nothing. The results
    // are dropped before timing so that neither run works around the other's heap.
    qsizetype records = 0;
    {
        JsonParser check;
        const JsonValue parsed = check.parse(text);
        QJsonParseError qtError;
        const QJsonDocument qtDoc = QJsonDocument::fromJson(bytes, &qtError);
        if (!check.errors().isEmpty() || !parsed.collection()
            || qtError.error != QJsonParseError::NoError
            || parsed.collection()->count() != qtDoc.array().size()) {
            std::fprintf(stderr, "the generated document did not parse the same way\n");
            return 1;
        }
        records = parsed.collection()->count();
    }

    // Each timed run includes freeing the result, for both parsers.
    const double qt = bestSeconds(Runs, [&] {
        const QJsonDocument d = QJsonDocument::fromJson(bytes);
        Q_UNUSED(d);
    });
    const double ours = bestSeconds(Runs, [&] {
        JsonParser parser;
        const JsonValue v = parser.parse(text);
        Q_UNUSED(v);
    });
    const double oursWithDecode = bestSeconds(Runs, [&] {
        JsonParser parser;
        const JsonValue v = parser.parse(QString::fromUtf8(bytes));
        Q_UNUSED(v);
    });

    std::printf("document: %.2f MB, %lld records, best of %d runs\n", megabytes,
                static_cast<long long>(records), Runs);
    std::printf("ParseJson:                     %8.1f MB/s\n", megabytes / ours);
    std::printf("ParseJson incl. UTF-8 decode:  %8.1f MB/s\n", megabytes / oursWithDecode);
    std::printf("QJsonDocument::fromJson:       %8.1f MB/s\n", megabytes / qt);
    std::printf("ratio=%.2f\n", qt / ours);
    return 0;
}
