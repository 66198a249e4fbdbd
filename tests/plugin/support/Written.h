#pragma once

#include "petal/PetalWriter.h"
#include "plugin/support/ModelBuilder.h"

#include "model/ExportState.h"

/// What the writers called by `write` put into the file, at level 1.
template <class Write>
std::string written(const Write& write)
{
    const TemporaryPath path;
    resetIndent();
    increaseIndent();
    theFile.open(path.get());
    write();
    theFile.close();
    EXPECT_EQ(indent.depth, 1) << "the level has changed";
    return path.content();
}

/// Scales for the length of a scope.
class Scales {
public:
    Scales(float x, float y)
    {
        XScale = x;
        YScale = y;
    }
    ~Scales() { XScale = YScale = 0; }
    Scales(const Scales&) = delete;
    Scales& operator=(const Scales&) = delete;
};
