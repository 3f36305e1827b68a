#pragma once
// What a driver is on the wire, as data: its frame family and walk, and which of the
// common connect, disconnect and radar forms it takes. A driver's .cpp holds one
// constexpr profile; CommonDriver turns it into behaviour.

#include <QtGlobal>

#include "framefamily.h"

namespace canbus {

enum class ConnectForm : quint8 {
    Base,          // the base class: ask again while unconnected, with no frame and no timer
    Simple,        // connect frame every second until the box answers
    RequestFirst,  // a data request 150 ms behind every call, then as Simple
    PollOnly,      // no frame; the retry timer only waits for the first frame
    Never,         // never asks
};

enum class DisconnectForm : quint8 {
    Base,          // the base class: forget the connection, send nothing
    Common,        // the disconnect frame if connected
    Always,        // the disconnect frame whatever the state
    Never,         // nothing, and the connection is kept
};

// The request frame that asks the box for its data, 150 ms behind every connect call:
// most boxes take a 0x90 frame naming one frame type.
struct ConnectRequest
{
    quint8 size;
    quint8 bytes[3];
    quint8 type = 0x90;
    quint16 delayMs = 150;
};

struct DriverProfile
{
    FrameFamily family;
    WalkVariant walk;
    ConnectForm connect = ConnectForm::Simple;
    DisconnectForm disconnect = DisconnectForm::Common;
    quint8 linkType = 0x81;         // type of the connect and disconnect frames
    ConnectRequest request = {0, {0, 0}};
    quint8 disconnectValue = 0x00;  // data byte of the disconnect frame
    bool powerOnWhileOff = false;   // change signals go on while the unit is off

    // Small builders so that a driver states only what differs from the usual form:
    //   DriverProfile{FrameFamily::Start2E, WalkVariant::C}.requesting(0x30, 0x00)
    constexpr DriverProfile connecting(ConnectForm form) const
    {
        DriverProfile p = *this;
        p.connect = form;
        return p;
    }
    constexpr DriverProfile requesting(quint8 type) const
    {
        DriverProfile p = connecting(ConnectForm::RequestFirst);
        p.request = {1, {type, 0, 0}};
        return p;
    }
    constexpr DriverProfile requesting(quint8 type, quint8 arg) const
    {
        DriverProfile p = connecting(ConnectForm::RequestFirst);
        p.request = {2, {type, arg, 0}};
        return p;
    }
    constexpr DriverProfile requesting(quint8 type, quint8 arg1, quint8 arg2) const
    {
        DriverProfile p = connecting(ConnectForm::RequestFirst);
        p.request = {3, {type, arg1, arg2}};
        return p;
    }
    // A request of another frame type: [type, data].
    constexpr DriverProfile requestingFrame(quint8 type, quint8 data) const
    {
        DriverProfile p = connecting(ConnectForm::RequestFirst);
        p.request = {1, {data, 0, 0}, type};
        return p;
    }
    // The request later than usual behind the connect call.
    constexpr DriverProfile requestAfter(quint16 delayMs) const
    {
        DriverProfile p = *this;
        p.request.delayMs = delayMs;
        return p;
    }
    constexpr DriverProfile disconnecting(DisconnectForm form) const
    {
        DriverProfile p = *this;
        p.disconnect = form;
        return p;
    }
    constexpr DriverProfile linkFrames(quint8 type, quint8 offValue = 0x00) const
    {
        DriverProfile p = *this;
        p.linkType = type;
        p.disconnectValue = offValue;
        return p;
    }
    constexpr DriverProfile poweredWhileOff() const
    {
        DriverProfile p = *this;
        p.powerOnWhileOff = true;
        return p;
    }
};

constexpr int kConnectIntervalMs = 1000;
constexpr int kRequestDelayMs = 150;   // the usual ConnectRequest::delayMs

} // namespace canbus
