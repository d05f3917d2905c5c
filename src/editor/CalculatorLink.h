// The link cable as the editor's send command sees it. The Qt program
// carries it out with libticalcs and shows the transfer's progress; tests
// put a simulated calculator on the other end.
#pragma once

#include <string>
#include <vector>

namespace shd {

class CalculatorLink {
public:
    virtual ~CalculatorLink() = default;
    // The cables found, by the names the user chooses from.
    virtual std::vector<std::string> FindCables() = 0;
    // Sends the variable of a TI-83 program file over cable `index` of the
    // last FindCables. Empty when the calculator took it; else what went
    // wrong, as a sentence for the user.
    virtual std::string Send(std::size_t index, const std::string& programFile) = 0;
};

}  // namespace shd
