#include "serialportobj.h"

#include <QFile>
#include <QFileInfo>
#include <QSerialPort>
#include <QTimer>
#include <QTimerEvent>

#include <algorithm>
#include <fcntl.h>
#include <initializer_list>
#include <iterator>

#include "activitymanager.h"
#include "autosendobj.h"
#include "canbuslog.h"
#include "datasavecontrol.h"
#include "framefamily.h"
#include "framereader.h"
#include "infomodule.h"
#include "inputinjector.h"
#include "common/kkmapkeys.h"
#include "common/longpresskey.h"
#include "modulemanager.h"
#include "muteobj.h"
#include "portrecovery.h"
#include "tqplatformcontrol.h"

using canbus::byteAt;

namespace {

const char TAG[] = "[MCU SerialPortObj]";

constexpr qint32 kBaudRate = 115200;
constexpr int kHeartbeatMs = 1000;
constexpr int kBlinkMs = 800;
constexpr int kLedGpioGroup = 1;     // the LED that blinks while the link runs
constexpr int kLedGpioPin = 60;
constexpr int kHeartbeatType = 29;
constexpr int kSelectionType = 30;
constexpr int kReversingMuteType = 35;
constexpr int kMinBuffered = 5;        // nothing is parsed before this many bytes
constexpr quint8 kAck = 0xFF;
constexpr quint8 kNack = 0xF0;

// Types of the MCU's 0x2E frames.
constexpr quint8 kNightModeFrame = 0x08;
constexpr quint8 kIgnitionFrame = 0x09;
constexpr quint8 kKeyFrame = 0x06;

// Byte 3 of the MCU's 0xFF 0x55 frames.
constexpr quint8 kTouchFrame = 0x05;
constexpr quint8 kUpdateFrame = 0x08;
constexpr quint8 kRequestFrame = 0x01;
constexpr quint8 kVersionFrame = 0x02;

// MCU key number -> head-unit key code.
struct McuKey { quint8 number; int code; };
constexpr McuKey kMcuKeys[] = {
    {3, 0x110002A},  {4, 0x1100041},  {5, 0x110003D},  {6, 0x110003E},  {7, 0x110003F},
    {8, 0x1100040},  {9, 0x110002C},  {10, 0x1300055}, {11, 0x1300058}, {12, 0x1200030},
    {13, 0x1100023}, {14, 0x1100024}, {15, 0x1100025}, {18, 0x110002F}, {19, 0x110002E},
    {20, 0x1200061}, {21, 0x110002B}, {22, 0x1300058}, {24, 0x1300059}, {25, 0x110002C},
    {49, 0x110004D}, {50, 0x110004E},   // momentary: released as soon as pressed
};

int mcuKeyCode(int number)
{
    const auto row = std::find_if(std::begin(kMcuKeys), std::end(kMcuKeys),
                                  [number](const McuKey& k) { return k.number == number; });
    return row == std::end(kMcuKeys) ? 0 : row->code;
}

bool isMomentaryKey(int number)
{
    return number == 49 || number == 50;
}

// The head unit's fixed frames: FF 55 09 <command> <a> <b> 00 F0 01 00 00 <checksum>
// (type 0 alone has 01 03 00 in place of command, a, b). A param of kAnyParam means
// the type ignores its parameter.
constexpr int kAnyParam = -1;
struct CommandFrame { int type; int param; quint8 command, a, b, checksum; int times; };
constexpr CommandFrame kCommandFrames[] = {
    {0,  kAnyParam, 0x01, 0x03, 0x00, 0xFE, 1},
    {1,  kAnyParam, 0x03, 0x01, 0x00, 0xFE, 1},
    {2,  kAnyParam, 0x03, 0x02, 0x00, 0xFF, 1},
    {3,  kAnyParam, 0x03, 0x02, 0x01, 0x00, 1},
    {4,  kAnyParam, 0x03, 0x03, 0x00, 0x00, 1},
    {5,  kAnyParam, 0x03, 0x04, 0x00, 0x01, 1},
    {6,  kAnyParam, 0x03, 0x03, 0x01, 0x01, 1},
    {7,  kAnyParam, 0x03, 0x05, 0x00, 0x02, 1},
    {8,  kAnyParam, 0x03, 0x06, 0x01, 0x04, 1},
    {9,  kAnyParam, 0x03, 0x06, 0x00, 0x03, 1},
    // The MCU may miss these while it switches, so they go out three times.
    {10, kAnyParam, 0x03, 0x07, 0x00, 0x04, 3},
    {11, kAnyParam, 0x03, 0x07, 0x01, 0x05, 3},
    {12, kAnyParam, 0x03, 0x07, 0x02, 0x06, 3},
    {13, kAnyParam, 0x03, 0x07, 0x03, 0x07, 3},
    {14, kAnyParam, 0x03, 0x07, 0x04, 0x08, 3},
    {15, kAnyParam, 0x03, 0x08, 0x00, 0x05, 1},
    {16, kAnyParam, 0x03, 0x09, 0x00, 0x06, 1},
    {17, kAnyParam, 0x03, 0x08, 0x01, 0x06, 1},
    {18, kAnyParam, 0x03, 0x09, 0x02, 0x08, 1},
    {19, kAnyParam, 0x03, 0x09, 0x04, 0x0A, 1},
    {20, kAnyParam, 0x03, 0x09, 0x05, 0x0B, 1},
    {21, kAnyParam, 0x03, 0x09, 0x06, 0x0C, 1},
    {22, kAnyParam, 0x03, 0x09, 0x07, 0x0D, 1},
    {23, kAnyParam, 0x03, 0x09, 0x08, 0x0E, 1},
    {24, kAnyParam, 0x03, 0x05, 0x10, 0x12, 1},
    {25, kAnyParam, 0x03, 0x05, 0x20, 0x22, 1},
    {26, kAnyParam, 0x03, 0x0A, 0x00, 0x07, 1},
    {27, kAnyParam, 0x03, 0x0B, 0x00, 0x08, 1},
    {28, kAnyParam, 0x03, 0x0C, 0x00, 0x09, 1},
    {29, kAnyParam, 0x03, 0x0D, 0x00, 0x0A, 1},   // heartbeat
    {30, 0,         0x03, 0x0E, 0x00, 0x0B, 1},   // selection
    {30, 1,         0x03, 0x0E, 0x01, 0x0C, 1},
    {30, 2,         0x03, 0x0E, 0x02, 0x0D, 1},
    {31, kAnyParam, 0x03, 0x0E, 0x03, 0x0E, 1},
    {32, kAnyParam, 0x03, 0x0E, 0x04, 0x0F, 1},
    {33, kAnyParam, 0x03, 0x0E, 0x05, 0x10, 1},
    {34, kAnyParam, 0x03, 0x0E, 0x06, 0x11, 1},
    {35, 0,         0x03, 0x0F, 0x01, 0x0D, 1},   // reversing mute
    // Not the sum of its bytes: the MCU has always been sent this checksum and
    // reads the frame by its position, so it stays as it is.
    {35, 1,         0x03, 0x0F, 0x00, 0x2B, 1},
    {35, 2,         0x03, 0x0F, 0x03, 0x0F, 1},
    {35, 3,         0x03, 0x0F, 0x04, 0x10, 1},
};

const CommandFrame* findCommandFrame(int type, int param)
{
    const auto row = std::find_if(std::begin(kCommandFrames), std::end(kCommandFrames),
                                  [type, param](const CommandFrame& f) {
                                      return f.type == type && (f.param == kAnyParam || f.param == param);
                                  });
    return row == std::end(kCommandFrames) ? nullptr : row;
}

// What the MCU asks for with FF 55 09 01 <a> <b> 00 F0 01 00 00 <checksum>.
enum class Request {
    OpenCarplay,
    OpenCarlife,
    ReportMediaSource,
    ReportProjection,
    Acknowledge,
    BringCarplayUp,
    Select,
    ReverseOn,
    ReverseOff,
    Nothing,
};
struct FixedRequest { quint8 a, b; Request request; int arg; };
constexpr FixedRequest kFixedRequests[] = {
    {0x02, 0x00, Request::OpenCarplay, 0},
    {0x01, 0x00, Request::OpenCarlife, 0},
    {0x04, 0x00, Request::ReportMediaSource, 0},
    {0x05, 0x00, Request::ReportProjection, 0},
    {0x06, 0x00, Request::Acknowledge, 0},
    {0x07, 0x00, Request::Acknowledge, 0},
    {0x08, 0x00, Request::Nothing, 0},
    {0x09, 0x00, Request::BringCarplayUp, 0},
    {0x0A, 0x00, Request::Select, 0},
    {0x0A, 0x01, Request::Select, 1},
    {0x0A, 0x02, Request::Select, 2},
    {0x0A, 0x03, Request::Nothing, 0},   // selections the head unit doesn't offer
    {0x0A, 0x04, Request::Nothing, 0},
    {0x0A, 0x05, Request::Nothing, 0},
    {0x0B, 0x01, Request::ReverseOn, 0},
    {0x0B, 0x00, Request::ReverseOff, 0},
};

// The source in front -> the command type that reports it.
struct SourceReply { const char* source; int type; };
constexpr SourceReply kMediaSourceReplies[] = {
    {"usb", 5},
    {"card", 5},
    {"carplay", 18},
    {"carlife", 17},
};
constexpr int kOtherSourceType = 0;
constexpr int kProjectionType = 8;
constexpr int kNoProjectionType = 9;

QString currentSource()
{
    const auto module = tqappframework::ModuleManager::self()->getModule(QStringLiteral("info"));
    const auto* info = qobject_cast<InfoModule*>(module.data());
    return info ? info->currentSource() : QString();
}

// Firmware update frames. The head unit's carry 0x86 in byte 3, the MCU's 0x08; byte 4
// is the step, and each step of the MCU is answered by the same step of the head unit.
constexpr int kPacketSize = 128;
constexpr quint8 kUpdateCommand = 0x86;
constexpr quint8 kUpdateStart = 0x00;    // head unit: an update begins
constexpr quint8 kUpdateSize = 0x01;     // MCU: ready; head unit: the packet count
constexpr quint8 kUpdatePacket = 0x02;   // MCU: asks for a packet; head unit: sends it
constexpr quint8 kUpdateDone = 0x03;     // MCU: all written; head unit: confirms
constexpr quint8 kShortLength = 0x09;    // 12-byte frames
constexpr quint8 kLongLength = 0x0D;     // 16-byte frames
constexpr quint8 kPacketLength = 0x8D;   // 144-byte frames
constexpr int kNumberAt = 11;            // packet count or number, high byte first
constexpr int kPacketAt = 15;

// A zeroed 0xFF 0x55 frame of length byte `length`, bytes from 3 on as given; the
// caller fills in the rest and sets the checksum.
QByteArray ff55Frame(quint8 length, std::initializer_list<quint8> from3)
{
    QByteArray frame(length + 3, '\0');
    frame[0] = char(0xFF);
    frame[1] = char(0x55);
    frame[2] = char(length);
    int i = 3;
    for (quint8 b : from3)
        frame[i++] = char(b);
    return frame;
}

void putBigEndian32(QByteArray& frame, int at, quint32 value)
{
    for (int i = 0; i < 4; ++i)
        frame[at + i] = char((value >> (24 - 8 * i)) & 0xFF);
}

quint32 bigEndian32(const QByteArray& frame, int at)
{
    quint32 value = 0;
    for (int i = 0; i < 4; ++i)
        value = (value << 8) | byteAt(frame, at + i);
    return value;
}

// A touch frame carries its point up to byte 7.
constexpr quint8 kTouchLength = 6;

// A point as the touch device's ioctl takes it: two 32-bit words, on the 32-bit unit
// and on a 64-bit desktop alike.
struct TouchPoint { qint32 x; qint32 y; };
static_assert(sizeof(TouchPoint) == 8, "the touch device reads two 32-bit words");

struct TouchAction { quint8 action; unsigned long command; };
constexpr TouchAction kTouchActions[] = {
    {1, 0x40044BE8},   // down
    {2, 0x40044BE9},   // move
    {3, 0x40044BEA},   // up
};

unsigned long touchCommand(quint8 action)
{
    for (const TouchAction& a : kTouchActions) {
        if (a.action == action)
            return a.command;
    }
    return 0;
}

} // namespace

SerialPortObj::SerialPortObj(QObject* parent)
    : QObject(parent)
    , port(new QSerialPort(this))
    , longPress(new LongPressKey([this](int key, int pressed) { sendKeyToQt(key, pressed); }, this))
{
    port->setPortName(mcuPortName());
    port->setBaudRate(kBaudRate, QSerialPort::AllDirections);
    port->setDataBits(QSerialPort::Data8);
    port->setStopBits(QSerialPort::OneStop);
    port->setParity(QSerialPort::NoParity);
    if (port->open(QIODevice::ReadWrite)) {
        connect(port, &QSerialPort::readyRead, this, &SerialPortObj::onReadyRead);
        longPress->armTimer();
        // The port keeps its name and settings while closed, so reopening it is all a
        // lost MCU needs; the connection and the timers carry on. A frame cut off by
        // the loss must not be completed by the new device's bytes.
        new PortRecovery(
            port, lcCanbusMcu, QLatin1String(TAG), [this] { return port->open(QIODevice::ReadWrite); },
            [this] { rxBuffer.clear(); });
        CB_DEBUG(lcCanbusMcu, TAG) << "init successed" << port->portName();
    } else {
        CB_ERROR(lcCanbusMcu, TAG) << "open port fail." << QStringLiteral("\"%1\"").arg(port->errorString());
    }

    touchFd = InputInjector::instance()->open(touchDevicePath().constData(), O_RDWR);
    if (touchFd < 0) {
        touchFd = -1;
        CB_ERROR(lcCanbusMcu, TAG) << "open touch fail";
    }
}

SerialPortObj::~SerialPortObj()
{
    if (touchFd >= 0)
        InputInjector::instance()->close(touchFd);
}

QString SerialPortObj::mcuPortName()
{
    const QByteArray fromEnv = qgetenv("CANBUS_MCU_PORT");
    return fromEnv.isEmpty() ? QStringLiteral("/dev/ttyS2") : QString::fromLocal8Bit(fromEnv);
}

void SerialPortObj::startOnFirstFrameReady()
{
    if (blinkTimerId == 0)
        blinkTimerId = startTimer(kBlinkMs, Qt::CoarseTimer);
    if (heartbeatTimerId == 0)
        heartbeatTimerId = startTimer(kHeartbeatMs, Qt::CoarseTimer);
}

void SerialPortObj::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == heartbeatTimerId) {
        sendDataToSerialPort(kHeartbeatType, -1);
        event->accept();
    } else if (event->timerId() == blinkTimerId) {
        ledState = !ledState;
        tqplfctrl::TQPlatformControl* control = tqplfctrl::TQPlatformControl::GetInstance();
        control->GpioWrite(kLedGpioGroup, kLedGpioPin, ledState ? 1 : 0);
        tqplfctrl::TQPlatformControl::ReleaseInstance();
        event->accept();
    } else {
        QObject::timerEvent(event);
    }
}

// ---- receiving ------------------------------------------------------------------

void SerialPortObj::onReadyRead()
{
    while (port->bytesAvailable() > 0) {
        const QByteArray chunk = port->readAll();
        if (chunk.isEmpty())
            break;
        receive(chunk);
    }
}

void SerialPortObj::receive(const QByteArray& bytes)
{
    CB_DEBUG(lcCanbusMcu, TAG) << "recv:" << canbus::hexDump(bytes);
    rxBuffer.append(bytes);
    parseBuffer();
}

// Takes every whole frame off the front of the buffer. Bytes that can't start a
// frame are dropped one at a time, so that the next good frame is found after junk,
// and a frame refused for its checksum doesn't hold back the good ones behind it.
void SerialPortObj::parseBuffer()
{
    while (rxBuffer.size() >= kMinBuffered) {
        const quint8 first = byteAt(rxBuffer, 0);
        if (first == 0x2E) {
            if (!takeStart2EFrame())
                return;
        } else if (first == 0xFF && byteAt(rxBuffer, 1) == 0x55) {
            if (!takeFF55Frame())
                return;
        } else {
            rxBuffer.remove(0, 1);
        }
    }
}

// False while the frame at the front is still incomplete.
bool SerialPortObj::takeStart2EFrame()
{
    if (byteAt(rxBuffer, 2) == 0) {
        // A frame of no length means the MCU lost track: start over from nothing.
        sendAckNack(false);
        rxBuffer.clear();
        return false;
    }
    int length = 0;
    QByteArray reply;
    const int result = canbus::checkFrame(canbus::FrameFamily::Start2E, rxBuffer, length, reply);
    if (result == canbus::FrameIncomplete)
        return false;
    const QByteArray frame = rxBuffer.left(length);
    rxBuffer.remove(0, length);
    if (result == canbus::FrameOk) {
        checkData1(frame);
    } else {
        CB_DEBUG(lcCanbusMcu, TAG) << "bad checksum:" << canbus::hexDump(frame);
        sendAckNack(false);
    }
    return true;
}

bool SerialPortObj::takeFF55Frame()
{
    const int length = byteAt(rxBuffer, 2);
    if (length == 0) {
        // Too short to hold its own checksum: not a frame.
        rxBuffer.remove(0, 1);
        return true;
    }
    const int size = length + 3;
    if (rxBuffer.size() < size)
        return false;
    const QByteArray frame = rxBuffer.left(size);
    rxBuffer.remove(0, size);
    QByteArray expected = frame;
    setChecksum(expected);
    if (expected == frame)
        checkData2(frame);
    else
        CB_DEBUG(lcCanbusMcu, TAG) << "bad checksum:" << canbus::hexDump(frame);
    return true;
}

bool SerialPortObj::checkData1(const QByteArray& frame)
{
    const FrameReader f(frame);
    const int length = f.at(2);
    switch (f.at(1)) {
    case kNightModeFrame:
        if (length >= 2 && f.at(3) <= 1 && f.at(4) == 0xFF)
            emit setNightModeSig(f.at(3) == 1);
        return true;
    case kIgnitionFrame:
        if (f.at(3) <= 1)
            emit accStateChanged(f.at(3) == 1);
        return true;
    case kKeyFrame:
        if (length >= 2)
            onKeyFrame(f.at(3), f.at(4));
        return true;
    default:
        return false;
    }
}

bool SerialPortObj::checkData2(const QByteArray& frame)
{
    switch (byteAt(frame, 3)) {
    case kTouchFrame:
        onTouchFrame(frame);
        return true;
    case kUpdateFrame:
        onUpdateFrame(frame);
        return true;
    case kRequestFrame:
        return onFixedRequest(frame);
    case kVersionFrame:
        if (byteAt(frame, 2) == kShortLength) {
            onVersionFrame(frame);
            return true;
        }
        return false;
    default:
        return false;
    }
}

// ---- keys and touches -------------------------------------------------------------

void SerialPortObj::onKeyFrame(int number, int state)
{
    if (state == 1) {
        const int key = canbus::kkmapKey(mcuKeyCode(number));
        sendKeyToQt(key, 1);
        lastKey = key;
        if (isMomentaryKey(number))
            sendKeyToQt(key, 0);
    } else if (state == 0) {
        if (!checkKeyLongPressed(false, 0, 0))
            sendKeyToQt(lastKey, 0);
    }
}

void SerialPortObj::sendKeyToQt(int key, int pressed)
{
    injectDeviceEvent(mcuKeyDevicePath().constData(),
                      static_cast<unsigned long>(key + canbus::kKeyIoctlBase),
                      static_cast<unsigned long>(pressed));
}

bool SerialPortObj::checkKeyLongPressed(bool pressed, int key, int longKey)
{
    return longPress->check(pressed, key, longKey);
}

void SerialPortObj::onKeyLongPressed()
{
    longPress->onHoldTimeout();
}

// FF 55 L 05 action x-low (x-high|y-high) y-low ...: 12-bit coordinates, the high
// nibbles sharing byte 6.
void SerialPortObj::onTouchFrame(const QByteArray& frame)
{
    const FrameReader f(frame);
    if (touchFd < 0 || f.at(2) < kTouchLength)
        return;
    TouchPoint point;
    point.x = f.at(5) + (f.at(6) & 0xF0) * 16;
    point.y = ((f.at(6) & 0x0F) << 8) | f.at(7);
    InputInjector::instance()->ioctlData(touchFd, touchCommand(f.at(4)), &point, sizeof point);
}

// ---- requests of the MCU ------------------------------------------------------------

bool SerialPortObj::onFixedRequest(const QByteArray& frame)
{
    // The checksum has been checked, so the first 11 bytes say it all.
    static const QByteArray head = QByteArray::fromHex("ff550901");
    static const QByteArray tail = QByteArray::fromHex("00f0010000");
    if (frame.size() != 12 || !frame.startsWith(head) || frame.mid(6, 5) != tail)
        return false;
    const quint8 a = byteAt(frame, 4);
    const quint8 b = byteAt(frame, 5);
    const auto row = std::find_if(std::begin(kFixedRequests), std::end(kFixedRequests),
                                  [a, b](const FixedRequest& r) { return r.a == a && r.b == b; });
    if (row == std::end(kFixedRequests))
        return false;

    tqappframework::ActivityManager* activities = tqappframework::ActivityManager::getInstance();
    switch (row->request) {
    case Request::OpenCarplay:
        activities->startActivity(QStringLiteral("carplay"), 1);
        break;
    case Request::OpenCarlife:
        activities->startActivity(QStringLiteral("carlife"), 0);
        break;
    case Request::ReportMediaSource: {
        const QString source = currentSource();
        const auto reply = std::find_if(std::begin(kMediaSourceReplies), std::end(kMediaSourceReplies),
                                        [&source](const SourceReply& r) { return source == QLatin1String(r.source); });
        sendDataToSerialPort(reply == std::end(kMediaSourceReplies) ? kOtherSourceType : reply->type, -1);
        break;
    }
    case Request::ReportProjection: {
        const QString source = currentSource();
        const bool projecting = source == QLatin1String("carlife") || source == QLatin1String("carplay");
        sendDataToSerialPort(projecting ? kProjectionType : kNoProjectionType, -1);
        break;
    }
    case Request::Acknowledge:
        sendDataToSerialPort(19, -1);
        break;
    case Request::BringCarplayUp:
        activities->bringToFront(QStringLiteral("carplay"));
        break;
    case Request::Select:
        lastSelect = row->arg;
        sendDataToSerialPort(kSelectionType, lastSelect);
        break;
    case Request::ReverseOn:
        sendDataToSerialPort(kReversingMuteType, 0);
        if (DataSaveControl::readSettingData(QStringLiteral("ReversingMute"), true).toBool())
            MuteObj::mute(this, 0);
        break;
    case Request::ReverseOff:
        sendDataToSerialPort(kReversingMuteType, 2);
        MuteObj::unMute(this, 0);
        break;
    case Request::Nothing:
        break;
    }
    return true;
}

void SerialPortObj::onVersionFrame(const QByteArray& frame)
{
    mcuVersion = QString::fromLatin1(frame.mid(4, 3).toHex().toUpper());
    DataSaveControl::saveTempData(QStringLiteral("MCUVERSION"), mcuVersion);
    CB_DEBUG(lcCanbusMcu, TAG) << "mcu version" << mcuVersion;
}

QString SerialPortObj::getMcuVersion() const
{
    return mcuVersion;
}

// ---- sending ------------------------------------------------------------------------

bool SerialPortObj::writeFrame(const QByteArray& frame)
{
    if (!port->isOpen())
        return false;
    CB_DEBUG(lcCanbusMcu, TAG) << "send:" << canbus::hexDump(frame);
    port->write(frame);
    return true;
}

void SerialPortObj::sendAckNack(bool ok)
{
    writeFrame(QByteArray(1, char(ok ? kAck : kNack)));
}

void SerialPortObj::setChecksum(QByteArray& frame)
{
    const int size = frame.size();
    if (size < 3)
        return;
    unsigned sum = 0;
    for (int i = 2; i < size - 1; ++i)
        sum += byteAt(frame, i);
    frame[size - 1] = char(sum & 0xFF);
}

QByteArray SerialPortObj::commandFrame(int type, int param)
{
    const CommandFrame* row = findCommandFrame(type, param);
    if (!row)
        return QByteArray();
    QByteArray frame = ff55Frame(kShortLength, {row->command, row->a, row->b, 0x00, 0xF0, 0x01});
    frame[11] = char(row->checksum);
    return frame;
}

void SerialPortObj::sendDataToSerialPort(int type, int param)
{
    const CommandFrame* row = findCommandFrame(type, param);
    if (!row || !port->isOpen())
        return;
    const QByteArray frame = commandFrame(type, param);
    if (row->times > 1)
        sendDataToSerialPortByTimes(frame, row->times, 200);
    else
        writeFrame(frame);
}

void SerialPortObj::sendDataToSerialPortByTimes(const QByteArray& frame, int times, int intervalMs)
{
    auto* sender = new AutoSendObj(port, frame, times, intervalMs);
    sender->start();
}

// ---- firmware update ----------------------------------------------------------------

void SerialPortObj::startMcuUpdate(const QString& path)
{
    const QFileInfo info(path);
    QFile file(path);
    if (!info.exists() || info.size() < 1 || !port->isOpen() || !file.open(QIODevice::ReadOnly)) {
        CB_ERROR(lcCanbusMcu, TAG) << "cannot update from" << path;
        emit updateMessage(0, tr("Please check file"));
        emit updateFinished(-1);
        return;
    }

    updatePackets.clear();
    while (!file.atEnd()) {
        QByteArray packet = file.read(kPacketSize);
        if (packet.isEmpty())
            break;
        packet.append(QByteArray(kPacketSize - packet.size(), '\0'));
        updatePackets.append(packet);
    }
    file.close();
    CB_DEBUG(lcCanbusMcu, TAG) << "update from" << path << "packets:" << updatePackets.size();

    updateProgress = 0.0;
    emit updateMessage(0, tr("update ..."));
    emitUpdateProgress(1);
    QByteArray start = ff55Frame(kShortLength, {kUpdateCommand, kUpdateStart});
    setChecksum(start);
    writeFrame(start);
}

// The update takes the packet count plus three steps: the start, the size frame, one
// per packet, and the end.
void SerialPortObj::emitUpdateProgress(int step)
{
    const qint64 steps = qint64(updatePackets.size()) + 3;
    const int percent = int(qint64(step) * 100 / steps);
    updateProgress = percent;
    emit progressChanged(percent);
}

void SerialPortObj::onUpdateFrame(const QByteArray& frame)
{
    const FrameReader f(frame);
    if (f.at(5) != 0 || f.at(6) != 0 || f.at(7) != 0)
        return;
    const quint8 length = f.at(2);
    const quint8 what = f.at(4);
    if (length == kShortLength && what == kUpdateSize)
        sendUpdateSize();
    else if (length == kShortLength && what == kUpdateDone)
        finishUpdate();
    else if (length == kLongLength && what == kUpdatePacket)
        sendUpdatePacket(frame);
}

// The MCU is ready: tell it how many packets to ask for.
void SerialPortObj::sendUpdateSize()
{
    QByteArray frame = ff55Frame(kLongLength, {kUpdateCommand, kUpdateSize});
    putBigEndian32(frame, kNumberAt, quint32(updatePackets.size()));
    setChecksum(frame);
    writeFrame(frame);
    updateProgress = 0.0;
    emitUpdateProgress(2);
}

void SerialPortObj::sendUpdatePacket(const QByteArray& request)
{
    const quint32 number = bigEndian32(request, kNumberAt);
    if (number >= quint32(updatePackets.size())) {
        CB_ERROR(lcCanbusMcu, TAG) << "packet" << number << "of" << updatePackets.size();
        emit updateMessage(0, tr("Package ID out of range"));
        return;
    }
    QByteArray frame = ff55Frame(kPacketLength, {kUpdateCommand, kUpdatePacket});
    frame.replace(kNumberAt, 4, request.mid(kNumberAt, 4));
    frame.replace(kPacketAt, kPacketSize, updatePackets.at(int(number)));
    setChecksum(frame);
    writeFrame(frame);
    emitUpdateProgress(int(number) + 3);
}

void SerialPortObj::finishUpdate()
{
    updateProgress = 0.0;
    updatePackets.clear();
    QByteArray frame = ff55Frame(kShortLength, {kUpdateCommand, kUpdateDone});
    setChecksum(frame);
    writeFrame(frame);
    emit updateMessage(0, tr("Successed"));
    emit progressChanged(100);
    emit updateFinished(0);
}
