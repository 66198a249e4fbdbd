#include "reader/document/Document.h"

#include "reader/document/Charset.h"
#include "reader/document/UnitFinder.h"
#include "reader/notation/Parser.h"
#include "text/Files.h"
#include "text/Places.h"

#include <algorithm>
#include <cstring>
#include <deque>
#include <functional>
#include <iterator>
#include <limits>
#include <memory_resource>
#include <optional>
#include <set>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace reader {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t largestFile = std::size_t{1} << 30U;
constexpr std::size_t mostUnits = 10000;
constexpr std::size_t largestUnits = std::size_t{4} << 30U; // all together

[[noreturn]] void throwUnreadable(const text::FileUnreadable& error)
{
    throw NotPetal(error.code() == std::errc::file_too_large ? "the file is larger than 1 GiB"
                                                             : error.code().message());
}

std::string readFile(const std::string& path)
{
    try {
        return text::readFile(path, largestFile);
    } catch (const text::FileUnreadable& error) {
        throwUnreadable(error);
    }
}

std::string readUnit(const std::string& path)
{
    try {
        return text::readNamedFile(path, largestFile);
    } catch (const text::FileUnreadable& error) {
        throwUnreadable(error);
    }
}

// The text of a file, its nodes, and an index of its places, so that one costs no walk through all of it.
struct Source {
    std::string text;
    std::pmr::monotonic_buffer_resource arena;
    std::optional<text::PlaceIndex> places;
    std::vector<const Object*> stubs;
    fs::path path;

    [[nodiscard]] Place place(const char* position) const
    {
        const auto [line, column] = places->at(static_cast<std::size_t>(position - text.data()));
        return {{}, line, column};
    }
};

void requireObject(std::string_view text)
{
    Scanner scanner(text);
    const Token first = scanner.next();
    const Token second = scanner.next();
    if (first.kind == TokenKind::end)
        throw NotPetal("no petal file: it is empty");
    if (first.kind != TokenKind::open || second.kind != TokenKind::word || second.text != "object")
        throw NotPetal("no petal file: it does not start with (object");
}

std::string hintAt(std::string_view charset)
{
    return std::string(", and --charset ").append(charset).append(" makes words of them");
}

} // namespace

struct Document::Contents {
    std::deque<Source> sources;                             // as the files
    std::map<const char*, std::size_t, std::less<>> starts; // of the texts of the sources
    std::vector<File> files;
    std::vector<MissingUnit> missing;
    std::unordered_map<const Object*, std::size_t> missingByStub;
    std::vector<Finding> findings;
    std::size_t objectCount = 0;
    Object nothing; // root of a file that ends before its root

    // Positions that are in no file count as the start of the first.
    [[nodiscard]] std::size_t sourceOf(const char* position) const
    {
        const auto behind = starts.upper_bound(position);
        if (behind == starts.begin())
            return 0;
        const std::size_t index = std::prev(behind)->second;
        return position <= sources[index].text.data() + sources[index].text.size() ? index : 0;
    }

    [[nodiscard]] Place place(const char* position) const
    {
        const std::size_t index = sourceOf(position);
        const char* const start = sources[index].text.data();
        const bool isInside = !std::less<>()(position, start) && position <= start + sources[index].text.size();
        Place place = sources[index].place(isInside ? position : start);
        place.file = files[index].name;
        return place;
    }

    void report(Severity severity, std::string_view kind, const char* position, std::string text)
    {
        findings.push_back({severity, kind, place(position), std::move(text)});
    }

    // Adds the file; throws NotPetal, and then nothing is added.
    void add(std::string bytes, const std::string& name, const std::string& charset);
    void reportFile(const ParsedFile& parsed, const DecodedText& decoded);
};

void Document::Contents::add(std::string bytes, const std::string& name, const std::string& charset)
{
    if (bytes.size() > largestFile)
        throw NotPetal("the file is larger than 1 GiB");
    DecodedText decoded = decode(std::move(bytes), charset);
    requireObject(decoded.text);
    if (decoded.text.size() > std::numeric_limits<std::uint32_t>::max())
        throw NotPetal("the file is too large");
    Source& source = sources.emplace_back();
    source.text = std::move(decoded.text);
    source.text.shrink_to_fit();
    source.places.emplace(source.text);
    starts.emplace(source.text.data(), sources.size() - 1);
    ParsedFile parsed = Parser(source.text, source.arena).parse();
    source.stubs = std::move(parsed.stubs);
    objectCount += parsed.objectCount;
    File file;
    file.name = name;
    file.encoding = decoded.encoding;
    file.header = parsed.header;
    file.root = parsed.root;
    if (file.header) {
        file.version = file.header->integer("version");
        file.charSet = file.header->integer("charSet");
        file.writtenBy = file.header->text("_written");
    }
    files.push_back(std::move(file));
    reportFile(parsed, decoded);
}

void Document::Contents::reportFile(const ParsedFile& parsed, const DecodedText& decoded)
{
    const Source& source = sources.back();
    if (decoded.undecodable > 0)
        report(Severity::warning, "charset", source.text.data() + decoded.firstUndecodable,
               std::to_string(decoded.undecodable) + " bytes of the file are no characters in " + decoded.encoding +
                   "; this is the first" + (decoded.fitting.empty() ? "" : hintAt(decoded.fitting)));
    if (!parsed.header)
        report(Severity::warning, "header", source.text.data(),
               "expected (object Petal in front of everything else; charset and version are not known");
    for (const SyntaxError& error : parsed.errors)
        report(Severity::error, "syntax", error.position, error.text);
}

// Reads the files of controlled units and puts their roots in the places of the objects that name them.
class Document::Units {
public:
    Units(Contents& contents, const ReadOptions& options)
        : contents(contents), options(options), finder(options, contents.sources.front().path.parent_path())
    {
    }

    void readAll()
    {
        known.insert(realPath(contents.sources.front().path));
        std::size_t next = 0;
        while (next < contents.sources.size()) { // units name units
            const Source& source = contents.sources[next++];
            for (const Object* const stub : source.stubs)
                read(*stub, source.path.parent_path());
        }
    }

private:
    static std::string realPath(const fs::path& path)
    {
        std::error_code none;
        return fs::weakly_canonical(fs::absolute(path, none), none).string();
    }

    void read(const Object& stub, const fs::path& folder)
    {
        const std::string fileName = stub.text("file_name");
        const std::string reason = whyNotRead(stub, fileName, folder);
        if (reason.empty())
            return;
        contents.missingByStub.emplace(&stub, contents.missing.size());
        contents.missing.push_back({&stub, fileName, reason, !options.readsUnits});
    }

    std::string whyNotRead(const Object& stub, const std::string& fileName, const fs::path& folder)
    {
        if (!options.readsUnits)
            return "units are not read";
        if (contents.files.size() > mostUnits || size > largestUnits)
            return "too many units";
        const FoundUnit& unit = finder.find(fileName, folder);
        if (!unit.whyNot.empty())
            return unit.whyNot;
        const std::string path = unit.path.string();
        if (!known.insert(unit.realPath.string()).second)
            return path + " is already part of this model";
        try {
            std::string bytes = readUnit(path);
            size += bytes.size();
            contents.add(std::move(bytes), path, options.charset);
        } catch (const NotPetal& error) {
            return path + ": " + error.what();
        }
        contents.sources.back().path = unit.path;
        return putInPlace(stub);
    }

    std::string putInPlace(const Object& stub)
    {
        File& file = contents.files.back();
        if (!file.root)
            return file.name + ": nothing is in it";
        if (file.root->kind() != stub.kind())
            return file.name + ": expected (object " + std::string(stub.kind()) + ", found (object " +
                   std::string(file.root->kind());
        file.stub = &stub;
        auto* const around = const_cast<Object*>(stub.parentObject);
        for (std::uint32_t i = 0; i < around->attributeCount; ++i)
            replace(around->firstAttribute[i].value, stub, *file.root);
        const_cast<Object*>(file.root)->parentObject = around;
        return "";
    }

    static void replace(Value& value, const Object& stub, const Object& root)
    {
        if (value.asObject() == &stub)
            value.object = &root;
        else if (const List* const list = value.asList())
            for (std::uint32_t i = 0; i < list->count; ++i)
                if (list->first[i].asObject() == &stub)
                    list->first[i].object = &root;
    }

    Contents& contents;
    const ReadOptions& options;
    UnitFinder finder;
    std::set<std::string> known; // files that are read, so that none is read twice and cycles end
    std::size_t size = 0;
};

std::string_view nameOf(Severity severity)
{
    switch (severity) {
    case Severity::note:
        return "note";
    case Severity::warning:
        return "warning";
    case Severity::error:
        break;
    }
    return "error";
}

Document::Document(const std::string& path, const ReadOptions& options)
    : Document(readFile(path), text::fileName(path), options)
{
}

Document::Document(std::string bytes, const std::string& name, const ReadOptions& options)
    : contents(std::make_unique<Contents>())
{
    contents->add(std::move(bytes), name, options.charset);
    contents->sources.front().path = name;
    Units(*contents, options).readAll();
}

Document::~Document() = default;
Document::Document(Document&& other) noexcept = default;
Document& Document::operator=(Document&& other) noexcept = default;

const Object& Document::root() const
{
    const Object* const root = contents->files.front().root;
    return root ? *root : contents->nothing;
}

const std::vector<File>& Document::files() const
{
    return contents->files;
}

const File& Document::fileOf(const char* position) const
{
    return contents->files[contents->sourceOf(position)];
}

const std::vector<MissingUnit>& Document::missingUnits() const
{
    return contents->missing;
}

const MissingUnit* Document::missingUnit(const Object& stub) const
{
    const auto found = contents->missingByStub.find(&stub);
    return found == contents->missingByStub.end() ? nullptr : &contents->missing[found->second];
}

const std::vector<Finding>& Document::findings() const
{
    return contents->findings;
}

Place Document::place(const char* position) const
{
    return contents->place(position);
}

std::string_view Document::text(const File& file) const
{
    return contents->sources[static_cast<std::size_t>(&file - contents->files.data())].text;
}

std::size_t Document::objectCount() const
{
    return contents->objectCount;
}

} // namespace reader
