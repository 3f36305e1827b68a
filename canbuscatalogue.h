#pragma once
// The vehicle protocols the module knows: one row each, and the CanBusData value that
// CanObj keeps for a row together with the row's partial frame.

#include <QByteArray>
#include <QString>

struct CanBusData
{
    CanBusData() = default;
    CanBusData(int id, int baudRate, const QString& make, const QString& model,
               const QString& vendor, bool ackEnabled, unsigned char ackByte,
               unsigned char nackByte)
        : id(id), baudRate(baudRate), ackEnabled(ackEnabled), ackByte(ackByte),
          nackByte(nackByte), make(make), model(model), vendor(vendor) {}

    int id = 0;
    int baudRate = 0;
    bool ackEnabled = false;
    quint8 ackByte = 0;
    quint8 nackByte = 0;
    QString make;
    QString model;
    QString vendor;
    QByteArray recvBuffer;   // bytes received for this protocol and not yet consumed
};

namespace canbus {

struct CatalogueRow
{
    int id;
    int baudRate;
    bool ackEnabled;
    quint8 ackByte;
    quint8 nackByte;
    const char* make;
    const char* model;
    const char* vendor;
};

constexpr int kCatalogueSize = 73;
extern const CatalogueRow kCatalogue[kCatalogueSize];

const CatalogueRow* findCatalogueRow(int id);

} // namespace canbus
