#include "canbuscatalogue.h"

namespace canbus {

// The protocols in the order the settings screen lists them, which is not the order of
// their ids. Make and model are translated in the context "CanObj", the vendor in
// "QObject". The acknowledgement columns describe the box for the screens; the frame
// code uses the values its family defines.
const CatalogueRow kCatalogue[kCatalogueSize] = {
    {27, 38400, true, 0xFF, 0xF0, "Volkswagen", "general", "Hiworld"},
    {28, 38400, true, 0xFF, 0xF0, "Volkswagen", "MQB(Golf)", "RuiZiCheng"},
    {29, 38400, true, 0xFF, 0xF0, "Volkswagen", "PQ", "RuiZiCheng"},
    {34, 38400, true, 0xFF, 0xF0, "Volkswagen", "07-10 Old models", "RuiZiCheng"},
    {30, 38400, true, 0xFF, 0xF0, "Toyota", "compatible", "RuiZiCheng"},
    {31, 38400, true, 0xFF, 0xF0, "Honda", "compatible(Portrait)", "RuiZiCheng"},
    {32, 38400, true, 0xFF, 0xF0, "NISSAN", "compatible", "RuiZiCheng"},
    {33, 38400, true, 0xFF, 0xF0, "GAC Trumpchi", "compatible", "RuiZiCheng"},
    {35, 38400, true, 0xFF, 0xF0, "NISSAN", "Infiniti QX50", "RuiZiCheng"},
    {36, 38400, true, 0xFF, 0xF0, "Honda", "DA Series", "RuiZiCheng"},
    {37, 38400, true, 0xFF, 0xF0, "Buick", "GM general series", "RuiZiCheng"},
    {38, 38400, true, 0xFF, 0xF0, "Buick", "Angkola(low profile)", "RuiZiCheng"},
    {39, 38400, true, 0xFF, 0xF0, "Buick", "GL8(Business Edition)", "RuiZiCheng"},
    {40, 38400, true, 0xFF, 0xF0, "Audi", "Audi", "RuiZiCheng"},
    {41, 38400, true, 0xFF, 0xF0, "Audi", "Audi Q3", "RuiZiCheng"},
    {42, 38400, true, 0xFF, 0xF0, "Baojun", "compatible", "RuiZiCheng"},
    {43, 38400, true, 0xFF, 0xF0, "BAIC", "BAIC", "RuiZiCheng"},
    {44, 38400, true, 0xFF, 0xF0, "BAIC", "BJ40", "RuiZiCheng"},
    {45, 38400, true, 0xFF, 0xF0, "BAIC", "EU5", "RuiZiCheng"},
    {46, 38400, true, 0xFF, 0xF0, "BAIC", "EC180", "RuiZiCheng"},
    {47, 38400, true, 0xFF, 0xF0, "BAIC", "EC5", "RuiZiCheng"},
    {48, 38400, true, 0xFF, 0xF0, "Ford", "general", "RuiZiCheng"},
    {49, 38400, true, 0xFF, 0xF0, "Geely", "general", "RuiZiCheng"},
    {50, 38400, true, 0xFF, 0xF0, "Toyota", "compatible(Landscape)", "RuiZiCheng"},
    {51, 38400, true, 0xFF, 0xF0, "Toyota", "compatible(Portrait)", "RuiZiCheng"},
    {53, 38400, true, 0xFF, 0xF0, "Honda", "compatible(Landscape)", "RuiZiCheng"},
    {54, 38400, true, 0xFF, 0xF0, "NISSAN", "Murano", "RuiZiCheng"},
    {55, 38400, true, 0xFF, 0xF0, "BAIC", "D50", "RuiZiCheng"},
    {56, 38400, true, 0xFF, 0xF0, "Benz", "compatible", "RuiZiCheng"},
    {57, 38400, true, 0xFF, 0xF0, "trumpchi", "GS5 Super Bo", "RuiZiCheng"},
    {58, 38400, true, 0xFF, 0xF0, "Great Wall", "2014 payment C30", "RuiZiCheng"},
    {59, 38400, true, 0xFF, 0xF0, "Great Wall", "14~17 Fengjun 6", "RuiZiCheng"},
    {60, 38400, true, 0xFF, 0xF0, "Great Wall", "HAVAL", "RuiZiCheng"},
    {61, 38400, true, 0xFF, 0xF0, "Great Wall", "20 models of H4 (portrait)", "RuiZiCheng"},
    {62, 38400, true, 0xFF, 0xF0, "Great Wall", "20 models(replacement H4/F7/H9)", "RuiZiCheng"},
    {63, 38400, true, 0xFF, 0xF0, "Chana Automobile", "Yuexiang V7", "RuiZiCheng"},
    {64, 38400, true, 0xFF, 0xF0, "Chana Automobile", "Auchan series", "RuiZiCheng"},
    {65, 38400, true, 0xFF, 0xF0, "Mazda", "new mazda", "RuiZiCheng"},
    {66, 19200, false, 0x00, 0x00, "Mazda", "old Mazda", "RuiZiCheng"},
    {67, 19200, false, 0xFF, 0xF0, "Korean-Hyundai Kia", "compatible", "RuiZiCheng"},
    {68, 38400, true, 0xFF, 0xF0, "Chery", "compatible", "RuiZiCheng"},
    {69, 38400, true, 0xFF, 0xF0, "JAC", "Refinery", "RuiZiCheng"},
    {70, 38400, true, 0xFF, 0xF0, "SAIC", "MAXUS", "RuiZiCheng"},
    {71, 38400, true, 0xFF, 0xF0, "SAIC", "Roewe", "RuiZiCheng"},
    {72, 38400, true, 0xFF, 0xF0, "SAIC", "MG Roewe", "RuiZiCheng"},
    {73, 38400, true, 0xFF, 0xF0, "Dongfeng", "18 scenery S560 automatic high-end", "RuiZiCheng"},
    {74, 38400, true, 0xFF, 0xF0, "Dongfeng", "scenery", "RuiZiCheng"},
    {75, 38400, true, 0xFF, 0xF0, "Dongfeng", "18 Scenery S560", "RuiZiCheng"},
    {76, 38400, true, 0xFF, 0xF0, "Dongfeng", "18 Scenery 580", "RuiZiCheng"},
    {77, 38400, true, 0xFF, 0xF0, "Dongfeng", "Jiangxi Isuzu", "RuiZiCheng"},
    {78, 38400, true, 0xFF, 0xF0, "Dongfeng", "Jing Yi", "RuiZiCheng"},
    {79, 38400, true, 0xFF, 0xF0, "Dongfeng", "Fengshen", "RuiZiCheng"},
    {80, 38400, true, 0xFF, 0xF0, "Dongfeng", "Kai Chen", "RuiZiCheng"},
    {81, 38400, true, 0xFF, 0xF0, "Pentium", "Brand new Pentium", "RuiZiCheng"},
    {82, 38400, true, 0xFF, 0xF0, "Pentium", "14 models of B70", "RuiZiCheng"},
    {83, 38400, false, 0xFF, 0xF0, "Pentium", "All X80 series", "RuiZiCheng"},
    {84, 38400, true, 0xFF, 0xF0, "bisu", "M3/T3/T5", "RuiZiCheng"},
    {85, 38400, true, 0xFF, 0xF0, "Pentium", "18 models of CX65", "RuiZiCheng"},
    {86, 19200, false, 0xFF, 0xF0, "Peugeot", "Peugeot(Keep the original car displayb)", "RuiZiCheng"},
    {87, 19200, true, 0xFF, 0xF0, "Peugeot", "Peugeot Citroen", "RuiZiCheng"},
    {88, 38400, true, 0xFF, 0xF0, "jeep", "Free Light/14~17 Grand Cherokee/Coolway", "RuiZiCheng"},
    {89, 38400, true, 0xFF, 0xF0, "jeep", "18 Wrangler/Challenger/18 Grand Cherokee", "RuiZiCheng"},
    {90, 38400, true, 0xFF, 0xF0, "jeep", "Freeman/Commander/19 Free Lights", "RuiZiCheng"},
    {91, 38400, true, 0xFF, 0xF0, "jeep", "Guides", "RuiZiCheng"},
    {92, 38400, true, 0xFF, 0xF0, "jeep", "16-20 Guides", "RuiZiCheng"},
    {93, 38400, true, 0xFF, 0xF0, "HaiMa", "M8", "RuiZiCheng"},
    {94, 38400, true, 0xFF, 0xF0, "HaiMa", "M5/M3/F5", "RuiZiCheng"},
    {95, 38400, true, 0xFF, 0xF0, "HaiMa", "16 models of V70", "RuiZiCheng"},
    {96, 38400, true, 0xFF, 0xF0, "Mitsubishi car series", "compatible", "RuiZiCheng"},
    {97, 38400, true, 0xFF, 0xF0, "southeast", "DX7/DX3/DX5", "RuiZiCheng"},
    {98, 38400, true, 0xFF, 0xF0, "FIAT", "compatible", "RuiZiCheng"},
    {110, 38400, true, 0xFF, 0xF0, "R3864", "GDH", "oudi"},
    {120, 38400, true, 0xFF, 0xFE, "TATA", "TATA", "Hiworld"},
};

const CatalogueRow* findCatalogueRow(int id)
{
    for (const CatalogueRow& row : kCatalogue) {
        if (row.id == id)
            return &row;
    }
    return nullptr;
}

} // namespace canbus
