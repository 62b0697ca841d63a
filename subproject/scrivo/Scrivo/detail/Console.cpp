#include "Scrivo/detail/Console.h"

#include <iostream>

namespace Scrivo::detail {

void printLine(const char* text) {
    std::cout << text << std::endl;
}

}  // namespace Scrivo::detail
