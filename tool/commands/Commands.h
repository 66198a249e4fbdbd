#pragma once

#include "tool/input/ReadRequest.h"
#include "tool/results/Failures.h"

#include "kiv/KivOptions.h"

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The commands behind the command line. Each returns the process's exit code and reports failures on standard error.

/// A value for an option of the bridge, by the option's name.
struct OptionValue {
    std::string name;
    std::string value;
};

/// How a design of another tool is taken.
struct DesignRequest {
    std::string format;     ///< name of a format, or empty to tell it by the content
    std::string reportFile; ///< path, `-` for standard output, or empty
    std::optional<bool>
        hasLayout; ///< lay out what has no places; left open: in designs, not in model files and Rose files
};

struct ExportRequest {
    std::vector<std::string> models; ///< paths, or `-` for standard input
    std::string output;              ///< file or folder, `-` for standard output, or empty for the models' names
    std::string log;                 ///< path, `-` for standard error, or empty
    std::string statisticsFile;
    std::vector<OptionValue> options; ///< in the order given; the last one for a name holds
    DesignRequest design;
    ReadRequest reading; ///< of a Rose file
    bool isQuiet = false;
    bool isStrict = false; ///< warnings are errors
    bool showsStatistics = false;
};

int runExport(const ExportRequest& request);

struct ImportRequest {
    std::vector<std::string> designs; ///< paths, or `-` for standard input
    std::string output;               ///< file or folder, `-` for standard output, or empty for the designs' names
    DesignRequest design;
    ReadRequest reading; ///< of a Rose file
    bool isQuiet = false;
    bool listsFormats = false; ///< instead of importing, which then needs no input
};

int runImport(const ImportRequest& request);

struct ConvertRequest {
    std::vector<std::string> inputs; ///< paths, or `-` for standard input
    std::string output;              ///< file or folder, `-` for standard output, or empty for the inputs' names
    std::string target;              ///< name of a format, or empty to tell it by the output's ending
    DesignRequest design;
    ReadRequest reading; ///< of a Rose file
    bool isQuiet = false;
    bool listsFormats = false; ///< instead of converting, which then needs no input
};

/// Writes designs in another format.
int runConvert(const ConvertRequest& request);

/// Why designs do not come in, or go out, in a format of that name, or the empty text when they do.
[[nodiscard]] std::string whyNotAFormatIn(const std::string& name);
[[nodiscard]] std::string whyNotAFormatOut(const std::string& name);

struct CheckRequest {
    std::vector<std::string> files; ///< paths, or `-` for standard input
    ReadRequest reading;
    std::string leastFault; ///< `note`, `warning`, `error`: from here on a finding speaks against the file
    bool asJson = false;
    bool showsNotes = false;
    bool isQuiet = false; ///< says nothing of how many there are
};

/// Says what is wrong with petal files.
int runCheck(const CheckRequest& request);

struct TreeRequest {
    std::vector<std::string> files; ///< paths, or `-` for standard input
    ReadRequest reading;
    std::size_t depth = std::numeric_limits<std::size_t>::max(); ///< number of levels shown
    bool isFull = false;                                         ///< everything that is said in the file alone
};

/// Prints the outlines of petal files.
int runTree(const TreeRequest& request);

/// Prints everything that is said in a petal file, without its units, one fact a line. Throws `reader::NotPetal`.
int writeFullTree(const std::string& file, const ReadRequest& reading);

struct DumpRequest {
    std::string input; ///< path, or `-` for standard input
    bool asJson = false;
    std::string output;     ///< of the JSON; `-` or empty is standard output
    std::string csvFolder;  ///< for the tables as texts, or empty
    std::string sqliteFile; ///< for the tables as a database, `-` for standard output, or empty
    ReadRequest reading;
    bool isQuiet = false;
};

/// Writes everything that is in a petal file as a tree or as tables.
int runDump(const DumpRequest& request);

/// What of two models is compared, and how it is told.
struct DiffRequest {
    std::string oldFile; ///< path, or `-` for standard input
    std::string newFile;
    ReadRequest reading;
    std::string only;            ///< `added`, `removed`, `changed`, `moved`, or empty for all of them
    bool ofModelOnly = false;    ///< without diagrams
    bool ofDiagramsOnly = false; ///< without anything else
    bool withAll = false;        ///< also what nobody has meant, as numbers and units
    bool asJson = false;
    bool asCounts = false;
    std::string pageFile;    ///< a page to write in place of the text, `-` for standard output, or empty
    bool isQuiet = false;    ///< the exit code alone
    bool isForPager = false; ///< what shows standard output takes colours
};

/// Tells what is different in two petal files.
int runDiff(const DiffRequest& request);

struct GitRequest {
    bool enables = false;
    bool disables = false;
    bool comparesFiles = false;     ///< git calls to compare two states of a file
    bool writesText = false;        ///< git calls for a text to compare
    std::vector<std::string> words; ///< what git hands over then
};

/// Sets up the repository around the current folder so that git compares Rose files with this command, and does what
/// git calls it for.
int runGitCommand(const GitRequest& request);

struct BrowseRequest {
    std::vector<std::string> files; ///< paths, or `-` for standard input
    std::string output;             ///< file or folder, `-` for standard output, or empty for the files' names
    ReadRequest reading;
    bool isQuiet = false;
};

/// Writes petal files as pages for a browser.
int runBrowse(const BrowseRequest& request);

struct DrawRequest {
    std::vector<std::string> files;    ///< paths, or `-` for standard input
    std::vector<std::string> diagrams; ///< names, full names or quids; none for all
    std::string output;                ///< file or folder, `-` for standard output, or empty for the current folder
    std::string format;                ///< `svg`, `png`, `pdf`, or empty to tell it by the output's ending
    ReadRequest reading;
    bool listsDiagrams = false; ///< instead of drawing
    bool asJson = false;        ///< the list
    bool isQuiet = false;
};

/// Draws diagrams of petal files.
int runDraw(const DrawRequest& request);

/// Why pictures have no format of that name, or the empty text when they have.
[[nodiscard]] std::string whyNotAnImageFormat(const std::string& name);

/// Lists the options of the bridge.
int runOptions(bool asJson);

/// Why `option` cannot be given to an export, or the empty text when it can.
[[nodiscard]] std::string whyNotAnOption(std::string_view option);
