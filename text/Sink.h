#pragma once

#include <string>
#include <string_view>

namespace text {

/// Takes a text piece by piece, such as a file.
class Sink {
public:
    Sink() = default;
    Sink(const Sink&) = delete;
    Sink& operator=(const Sink&) = delete;
    virtual ~Sink() = default;

    virtual void write(std::string_view piece) = 0;
};

/// The end of a text that grows, whose beginning has gone into a sink. So no long text lies whole in memory.
class Tail {
public:
    explicit Tail(Sink& theSink) : sink(theSink) {}

    /// What has not gone yet, to be appended to.
    [[nodiscard]] std::string& text() { return pieces; }

    /// Lets go what there is, if it is much.
    void passOnWhenLong()
    {
        constexpr std::size_t much = std::size_t{1} << 20U;
        if (pieces.size() >= much)
            passOn();
    }

    void passOn()
    {
        sink.write(pieces);
        pieces.clear();
    }

private:
    Sink& sink;
    std::string pieces;
};

} // namespace text
