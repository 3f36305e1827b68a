#ifndef PLATFORM_H
#define PLATFORM_H

// Puts every desktop stand-in back to how a fresh process finds it: no
// registered modules, language "en", the system clock, no activity, property,
// night mode, mute hold, message or GPIO state, the real input injector, and
// the data store re-opened without temporary data (persisted data stays).
// Tests call it between cases so that one case's platform state can't leak
// into the next.
void resetPlatformForTests();

#endif // PLATFORM_H
