#include "data48info.h"

void Data48Info::clear()
{
    basic.clear();
    basicFrameCache.clear();
    park.clear();
    settings.clear();
    wind.clear();
    amplifier.clear();
    massage.clear();
    sync.clear();
    media.clear();
    command.clear();
}
