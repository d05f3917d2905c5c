// The link cable for the editor's send command: libticalcs underneath, a
// busy cursor while the cables are looked for and a progress bar while the
// program goes across.
#pragma once

#include <vector>

#include "editor/CalculatorLink.h"
#include "link/Link.h"

class QWidget;

namespace shd::gui {

class QtCalculatorLink : public CalculatorLink {
public:
    explicit QtCalculatorLink(QWidget* parent) : parent_(parent) {}
    std::vector<std::string> FindCables() override;
    std::string Send(std::size_t index, const std::string& programFile) override;

private:
    QWidget* parent_;
    std::vector<link::Cable> cables_;
};

}  // namespace shd::gui
