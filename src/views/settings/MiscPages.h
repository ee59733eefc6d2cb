// The nine pages of the settings window.
#pragma once

#include <QWidget>

#include "settings/MiscControls.h"
#include "views/frame/Binder.h"

namespace korvane::views {

// Each fills its page with its groups.
void fillIgnitionPage(settings::MiscControls& window, Binder& binder, QWidget* page);
void fillInjectionPage(settings::MiscControls& window, Binder& binder, QWidget* page);
void fillPwmPage(settings::MiscControls& window, Binder& binder, QWidget* page);
// Has a label named "lambdaLine", which says that the boxes of the correction are not filled.
void fillLambdaPage(settings::MiscControls& window, Binder& binder, QWidget* page);
void fillMiscPage(settings::MiscControls& window, Binder& binder, QWidget* page);
void fillFlagsPage(settings::MiscControls& window, Binder& binder, QWidget* page);
void fillWarningsPage(settings::MiscControls& window, Binder& binder, QWidget* page);
void fillLaunchPage(settings::MiscControls& window, Binder& binder, QWidget* page);
void fillToolsPage(settings::MiscControls& window, Binder& binder, QWidget* page);

}  // namespace korvane::views
