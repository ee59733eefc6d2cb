// The list of ports: the device beside each name, and names without a device dimmed.
#pragma once

#include "views/widgets/DropDown.h"

namespace korvane::views {

class PortList : public DropDown {
public:
    explicit PortList(QWidget* parent);

    void showPopup() override;
};

}  // namespace korvane::views
