#pragma once

#include <QString>

#include <array>
#include <optional>

// A group address of three levels ("1/2/3"), two ("1/234") or none ("1234"), or a range of them ("1/-/-", "1/2/-").
struct TGroupAddress
{
    std::array<int, 3> Parts{};
    int Levels = 0; // how many parts it has, 1 to 3
    int Filled = 0; // how many of them, from the left, are numbers; the others are "-"

    bool IsRange() const { return Filled < Levels; }
};

// What `text` is by its shape; nothing for anything that is no address. The numbers may lie outside of the bus's.
std::optional<TGroupAddress> ParseGroupAddress(QStringView text);

// Whether an address or a range can be on the bus. The address 0 cannot: it stands for a broadcast.
bool IsOnBus(const TGroupAddress& address);

// The sixteen bits that go over the bus; equal for "1/2/3", "1/515" and "2563". For addresses that are on the bus.
int BusValue(const TGroupAddress& address);

// As people write it, without superfluous zeros.
QString AddressText(const TGroupAddress& address);

// Why `text` is no single address on the bus, for a message.
QString AddressFault(QStringView text);
