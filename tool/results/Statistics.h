#pragma once

#include <cstddef>
#include <string>

/// What a stage of the export cost.
struct StageCost {
    double seconds = 0;
    std::size_t bytes = 0;
    std::size_t objects = 0;
};

/// What an export cost.
struct Statistics {
    StageCost load;             ///< from the model file to the model; bytes of the model file
    StageCost number;           ///< until the first package; bytes of the model file
    StageCost write;            ///< until the file is closed; bytes of the output
    std::size_t peakMemory = 0; ///< bytes

    /// A line each for the stages and for the peak memory.
    [[nodiscard]] std::string asText() const;
    [[nodiscard]] std::string asJson() const;
};

/// The most memory that the process has held so far, in bytes.
[[nodiscard]] std::size_t peakMemoryOfProcess();
