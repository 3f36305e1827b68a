#include "boxeventtext.h"

#include "hexbytes.h"

namespace canbox {

namespace {

QString typeHex(quint8 type)
{
    return QStringLiteral("%1").arg(type, 2, 16, QLatin1Char('0'));
}

// "AA55 73: 40 40 16" - the frame as its family sees it.
QString decoded(const BoxEvent& e, canbus::FrameFamily family)
{
    QString text = QString::fromLatin1(canbus::familyName(family)) + QLatin1Char(' ') + typeHex(e.type);
    if (!e.data.isEmpty())
        text += QStringLiteral(": ") + spacedHex(e.data);
    return text;
}

QString wire(const QByteArray& bytes)
{
    return QStringLiteral("(") + spacedHex(bytes) + QLatin1Char(')');
}

// The type that an AA 55 acknowledgement answers sits in its data byte.
QString ackOf(const BoxEvent& e, canbus::FrameFamily family, const char* word)
{
    QString text = QString::fromLatin1(word);
    if (family == canbus::FrameFamily::StartAA55 && e.bytes.size() == 6)
        text += QStringLiteral(" of ") + typeHex(quint8(e.bytes.at(4)));
    return text;
}

QString withNote(QString text, const QString& note)
{
    if (!note.isEmpty())
        text += QStringLiteral("  ") + note;
    return text;
}

} // namespace

QString eventText(const BoxEvent& e, canbus::FrameFamily family)
{
    switch (e.kind) {
    case BoxEvent::Sent:
        return withNote(QStringLiteral("send  ") + (e.raw ? QStringLiteral("raw") : decoded(e, family))
                            + QStringLiteral("  ") + wire(e.bytes),
                        e.text);
    case BoxEvent::AckSent:
        return QStringLiteral("send  ack  ") + wire(e.bytes);
    case BoxEvent::NackSent:
        return QStringLiteral("send  nack  ") + wire(e.bytes);
    case BoxEvent::Received:
        return withNote(QStringLiteral("recv  ") + decoded(e, family) + QStringLiteral("  ") + wire(e.bytes), e.text);
    case BoxEvent::AckReceived:
        return QStringLiteral("recv  ") + ackOf(e, family, "ack") + QStringLiteral("  ") + wire(e.bytes);
    case BoxEvent::NackReceived:
        return QStringLiteral("recv  ") + ackOf(e, family, "nack") + QStringLiteral("  ") + wire(e.bytes);
    case BoxEvent::BadChecksum:
        return QStringLiteral("recv  bad checksum  ") + wire(e.bytes);
    case BoxEvent::Junk:
        return QStringLiteral("recv  junk  ") + wire(e.bytes);
    case BoxEvent::Connected:
        return QStringLiteral("----  the head unit connected");
    case BoxEvent::Disconnected:
        return QStringLiteral("----  the head unit disconnected");
    case BoxEvent::ScenarioStarted:
        return QStringLiteral("----  ") + e.text;
    case BoxEvent::Finished:
        return QStringLiteral("----  all scenarios played; the box keeps answering");
    }
    return QString();
}

} // namespace canbox
