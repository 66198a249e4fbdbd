#include "tool/output/StandardOutput.h"

#include "tool/output/Writing.h"

#include <iostream>
#include <system_error>
#include <unistd.h>

StandardOutput::StandardOutput() : before(std::cout.rdbuf(this))
{
    setp(buffer.data(), buffer.data() + buffer.size());
}

StandardOutput::~StandardOutput()
{
    std::cout.flush();
    std::cout.rdbuf(before);
}

StandardOutput::int_type StandardOutput::overflow(int_type character)
{
    if (sync() != 0)
        return traits_type::eof();
    return traits_type::eq_int_type(character, traits_type::eof()) ? traits_type::not_eof(character)
                                                                   : sputc(traits_type::to_char_type(character));
}

int StandardOutput::sync()
{
    const std::string_view text(pbase(), static_cast<std::size_t>(pptr() - pbase()));
    setp(buffer.data(), buffer.data() + buffer.size());
    try {
        if (firstError == 0)
            writeAll(STDOUT_FILENO, text, "standard output");
    } catch (const std::system_error& error) {
        firstError = error.code().value();
    }
    return firstError == 0 ? 0 : -1;
}
