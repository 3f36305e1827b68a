#pragma once
// The record of the Chery box: the vehicle model and body bits, the numbered settings
// of frame 0x40 and the status page of frame 0x41.

#include <QMetaType>
#include <QString>

#include "dataidinfo.h"

struct vehicleSettings68
{
    void clear() { *this = vehicleSettings68(); }

    quint8 carModel = 0;   // "CanbusCAR", 0..12; 3 takes its texts in UTF-16
    quint8 spare1 = 0;
    QString outdoorTempText = QStringLiteral("--");
    quint8 doorBit2 = 0;   // frame 0x24 byte 4
    quint8 doorBit1 = 0;
    quint8 doorBit0 = 0;
    quint8 centerToggle = 0;   // flips with every touch on the centre of the screen
};

// Frame 0x40: one setting a frame, named by its item number.
struct SettingItemStatusInformation68
{
    void clear() { *this = SettingItemStatusInformation68(); }

    quint8 item0 = 0, item1 = 0, item2 = 0, item3 = 0, item4 = 0, item5 = 0, item6 = 0, item7 = 0;
    quint8 item8 = 0, item9 = 0, item10 = 0, item11 = 0, item12 = 0, item13 = 0, item14 = 0;
    quint8 item15 = 0, item16 = 0, item17 = 0, item18 = 0, item19 = 0, item20 = 0, item21 = 0;
    quint8 item22 = 0, item23 = 0, item24 = 0, item25 = 0, item26 = 0, item27 = 0, item28 = 0;
    quint8 item29 = 0, item30 = 0, item31 = 0, item32 = 0, item33 = 0, item34 = 0, item35 = 0;
    quint8 item36 = 0, item37 = 0, item38 = 0, item39 = 0, item40 = 0, item41 = 0, item42 = 0;
    quint8 item254 = 0, item255 = 0;
};

// Frame 0x41.
struct SetItemStatus_2_information68
{
    void clear() { *this = SetItemStatus_2_information68(); }

    quint8 status7 = 0, status5 = 0, status4 = 0, status3 = 0, status2 = 0, status1 = 0, status0 = 0;
    quint8 level1 = 0;   // 0..7
    quint8 level2 = 0;
    QString distanceText = QStringLiteral("--");
    QString consumptionText = QStringLiteral("--");
};

class Data68Info : public DataIdInfo
{
public:
    // The vehicle model is the user's choice and stays.
    void clear()
    {
        const quint8 model = vehicle.carModel;
        *this = Data68Info();
        vehicle.carModel = model;
    }

    vehicleSettings68 vehicle;
    SettingItemStatusInformation68 items;
    SetItemStatus_2_information68 status;
};
Q_DECLARE_METATYPE(Data68Info)
