#include "platform.h"

#include "activitymanager.h"
#include "canbuscontrol.h"
#include "datasavecontrol.h"
#include "datetimectrl.h"
#include "inputinjector.h"
#include "languagemanager.h"
#include "modulemanager.h"
#include "muteobj.h"
#include "screenlockctrl.h"
#include "tipdialog.h"
#include "tqplatformcontrol.h"

void resetPlatformForTests()
{
    tqappframework::ModuleManager::self()->clear();
    tqappframework::ActivityManager::getInstance()->reset();
    LanguageManager::getInstance()->setLanguage(QStringLiteral("en"));
    DateTimeCtrl::getInstance()->reset();
    CanbusControl::reset();
    ScreenLockCtrl::reset();
    MuteObj::reset();
    TipDialog::reset();
    tqplfctrl::TQPlatformControl::peekInstance()->reset();
    InputInjector::install(nullptr);
    DataSaveControl::reload();
}
