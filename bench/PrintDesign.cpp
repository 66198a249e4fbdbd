// Prints a design to try something with:
//
//     print_design SIZE         the ordinary design, of about SIZE model objects
//     print_design SIZE NAME    the first trap with NAME in its name

#include "Designs.h"

#include <cstdlib>
#include <iostream>

int main(int argumentCount, char** arguments)
{
    const std::size_t size = argumentCount > 1 ? std::strtoull(arguments[1], nullptr, 10) : 0;
    if (size == 0) {
        std::cerr << "usage: print_design SIZE [NAME]\n";
        return 2;
    }
    if (argumentCount == 2) {
        std::cout << ordinaryDesign(size);
        return 0;
    }
    for (const Trap& trap : traps()) {
        if (trap.name.find(arguments[2]) == std::string_view::npos)
            continue;
        std::cout << trap.design(size);
        return 0;
    }
    std::cerr << "print_design: there is no trap with that name\n";
    return 1;
}
