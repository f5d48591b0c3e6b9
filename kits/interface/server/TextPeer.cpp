#include "server/TextPeer.h"

#include <algorithm>
#include <QTextBoundaryFinder>

int PlaceOfByte(const QString& text, int32 byteOffset)
{
    const QByteArray bytes = text.toUtf8();
    const auto count = std::clamp<qsizetype>(byteOffset, 0, bytes.size());
    return static_cast<int>(QString::fromUtf8(bytes.constData(), count).size());
}

int32 ByteOfPlace(const QString& text, int place)
{
    return static_cast<int32>(text.left(place).toUtf8().size());
}

QString CutToBytes(const QString& text, int32 most)
{
    if (text.toUtf8().size() <= most)
        return text;
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (qsizetype next = letters.toNextBoundary();
         next > 0 && ByteOfPlace(text, static_cast<int>(next)) <= most;
         next = letters.toNextBoundary())
        end = next;
    return text.left(end);
}
