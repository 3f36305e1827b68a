#pragma once
// Settings pages: one frame type whose selector byte names a page of vehicle settings,
// each page a short table of bit fields (bitfields.h). A driver lists its pages as
//
//   constexpr canbus::BitField<Settings> kPage10[] = { ... };
//   constexpr canbus::BitField<Settings> kPage20[] = { ... };
//   constexpr canbus::SettingsPage<Settings> kPages[] = {
//       canbus::settingsPage(0x10, kPage10),
//       canbus::settingsPage(0x20, kPage20),
//   };
//
// and decodes a frame with decodeSettingsPage(kPages, reader, 3, settings), the
// selector being frame byte 3 (D0 of a 0x2E frame). A page the table doesn't list
// changes nothing.

#include <cstddef>

#include "common/bitfields.h"

namespace canbus {

template <typename Record>
struct SettingsPage
{
    quint8 page;
    const BitField<Record>* rows;
    std::size_t count;
};

template <typename Record, std::size_t N>
constexpr SettingsPage<Record> settingsPage(int page, const BitField<Record> (&rows)[N])
{
    return {quint8(page), rows, N};
}

template <typename Record, std::size_t N>
const SettingsPage<Record>* findSettingsPage(const SettingsPage<Record> (&pages)[N], int page)
{
    for (const SettingsPage<Record>& p : pages) {
        if (p.page == page)
            return &p;
    }
    return nullptr;
}

// Decodes the page that frame byte `selector` names; false when no row lists it.
template <typename Record, std::size_t N>
bool decodeSettingsPage(const SettingsPage<Record> (&pages)[N], const FrameReader& frame,
                        int selector, Record& record)
{
    const SettingsPage<Record>* page = findSettingsPage(pages, frame.at(selector));
    if (!page)
        return false;
    for (std::size_t i = 0; i < page->count; ++i)
        record.*page->rows[i].field = readBitField(page->rows[i], frame);
    return true;
}

} // namespace canbus
