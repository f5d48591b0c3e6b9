#include "server/TextPeer.h"

#include <algorithm>
#include <QList>
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

bool TextLimit::Allows(const QString& text) const
{
    // A place of a QString is at most a character and three bytes.
    if (text.size() <= characters && text.size() * 3 <= bytes)
        return true;
    return text.toUtf8().size() <= bytes && text.toUcs4().size() <= characters;
}

QString TextLimit::Cut(const QString& text) const
{
    if (Allows(text))
        return text;
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (qsizetype next = letters.toNextBoundary(); next > 0 && Allows(text.left(next));
         next = letters.toNextBoundary())
        end = next;
    return text.left(end);
}
