#include "DemoConsole.h"

#include <iostream>

namespace ZemTreeDemo {

void DemoConsole::printLine(const std::string& line)
{
    const std::lock_guard<std::mutex> lock(_mutex);
    std::cout << line << std::endl;
}

} // namespace ZemTreeDemo
