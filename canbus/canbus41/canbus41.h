#pragma once
// Audi "Audi Q3", box by RuiZiCheng: the smallest driver of its family. It reads keys,
// doors, the steering angle and two body bytes, and sends only the link frames.
#include "recorddriver.h"

class FrameReader;

class Data41Info : public DataIdInfo
{
public:
    void clear() {}
};
Q_DECLARE_METATYPE(Data41Info)

class Canbus41Obj : public RecordDriver<Data41Info>
{
    Q_OBJECT
public:
    explicit Canbus41Obj(QObject* parent = nullptr);

    void initData() override;
    bool hadReverseLine() const override;
    int checkProtocolData(const QByteArray& frame) override;

protected:
    // For the drivers that extend this one.
    Canbus41Obj(int driverId, const canbus::DriverProfile& profile, QObject* parent);

private:
    static int getQtKeyFromValue(int value);

    void onBodyBytes(const FrameReader& f);
    void onKey(const FrameReader& f);
    void onDoors(const FrameReader& f);
    void onSteering(const FrameReader& f);
};
