#pragma once
#include <QMetaType>
#include <QVariantList>
#include <QtGlobal>

#include "recordfields.h"

// Seat heating and cooling levels, embedded in AirData.
//
// The copy constructor leaves the two "group visible" flags of the third and fourth
// seat groups at 0: a copied record never shows those groups until the driver that
// owns the record turns them on again. Assignment copies everything.
class SeatHeatingData
{
    Q_GADGET
    Q_PROPERTY(quint8 seatHotVisible MEMBER seatHotVisible)
    Q_PROPERTY(quint8 seatHotLeft MEMBER seatHotLeft)
    Q_PROPERTY(quint8 seatHotRight MEMBER seatHotRight)
    Q_PROPERTY(quint8 seatCoolVisible MEMBER seatCoolVisible)
    Q_PROPERTY(quint8 seatCoolLeft MEMBER seatCoolLeft)
    Q_PROPERTY(quint8 seatCoolRight MEMBER seatCoolRight)
    Q_PROPERTY(quint8 seatGroup3Visible MEMBER seatGroup3Visible DESIGNABLE false)
    Q_PROPERTY(quint8 seatGroup3Left MEMBER seatGroup3Left DESIGNABLE false)
    Q_PROPERTY(quint8 seatGroup3Right MEMBER seatGroup3Right DESIGNABLE false)
    Q_PROPERTY(quint8 seatGroup4Visible MEMBER seatGroup4Visible DESIGNABLE false)
    Q_PROPERTY(quint8 seatGroup4Level MEMBER seatGroup4Level DESIGNABLE false)
    Q_PROPERTY(quint8 seatGroup4Right MEMBER seatGroup4Right DESIGNABLE false)
    Q_PROPERTY(QVariantList seatGroup4Extra READ seatGroup4ExtraList DESIGNABLE false)

public:
    SeatHeatingData() = default;
    SeatHeatingData(const SeatHeatingData& other);
    SeatHeatingData& operator=(const SeatHeatingData& other) = default;
    ~SeatHeatingData() = default;

    QVariantList seatGroup4ExtraList() const { return canbus::fieldList(seatGroup4Extra); }

    quint8 seatHotVisible = 0;
    quint8 seatHotLeft = 0;
    quint8 seatHotRight = 0;
    quint8 seatCoolVisible = 0;
    quint8 seatCoolLeft = 0;
    quint8 seatCoolRight = 0;
    quint8 seatGroup3Visible = 0;
    quint8 seatGroup3Left = 0;
    quint8 seatGroup3Right = 0;
    quint8 seatGroup4Visible = 0;
    quint8 seatGroup4Level = 0;
    quint8 seatGroup4Right = 0;
    quint8 seatGroup4Extra[2] = {0, 0};
};

Q_DECLARE_METATYPE(SeatHeatingData*)
