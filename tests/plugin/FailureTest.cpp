#include "plugin/support/Runs.h"

#include <clocale>
#include <csignal>
#include <gmock/gmock.h>
#include <new>
#include <pthread.h>
#include <sys/resource.h>
#include <unwind.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

struct TaggedException : KivException {
    TaggedException() : KivException(ROS_E_PRINTING_DIAGRAM, "tag") {}
    int tag = 42;
};

// As the run-time system of another language throws them.
void throwForeignException()
{
    static _Unwind_Exception exception;
    exception = {};
    exception.exception_class = 0x666F726569676E00;
    _Unwind_RaiseException(&exception);
}

// What becomes of a run in a thread of its own.
std::string outcomeOf(KivModel& model, KivOptionList& options, KivLog& log)
{
    struct Run {
        KivModel& model;
        KivOptionList& options;
        KivLog& log;
        std::string outcome = "the thread has ended";
    } run = {model, options, log};
    pthread_t thread = {};
    const auto start = [](void* argument) -> void* {
        Run& given = *static_cast<Run*>(argument);
        given.outcome = failureOf(given.model, given.options, given.log);
        return nullptr;
    };
    EXPECT_EQ(pthread_create(&thread, nullptr, start, &run), 0);
    EXPECT_EQ(pthread_join(thread, nullptr), 0);
    return run.outcome;
}

} // namespace

TEST(Failure, OfTheLogEndsTheFileWhereItStandsAndUndoesTheRest)
{
    const std::string unexpected = "BRIDGE_UNEXPECTED_ERROR KivIbmRationalRose98Export";
    const struct {
        const char* description;
        void (*fail)();
        std::string outcome;
    } rows[] = {
        {"the host's exception", [] { throw TaggedException(); }, "ROS_E_PRINTING_DIAGRAM tag"},
        {"another exception", [] { throw std::runtime_error("broken"); }, unexpected},
        {"no memory", [] { throw std::bad_alloc(); }, unexpected},
        {"a number", [] { throw 7; }, unexpected},
        {"an exception that is not of C++", throwForeignException, unexpected},
        {"end of the thread", [] { pthread_exit(nullptr); }, "the thread has ended"},
        {"cancelled", [] { pthread_cancel(pthread_self()), pthread_testcancel(); }, "the thread has ended"},
    };
    ModelBuilder reference;
    fill(reference, nullptr);
    RecordingLog log;
    const std::string whole = exportedFile(reference.model, log);
    const Names allEntries = log.entries;
    ASSERT_EQ(allEntries.size(), 12U);
    const std::pair<const char*, std::size_t> firstEntryBehind[] = {
        {"diagram_item_list))))", 0},   {"root_category", 1},          {"(object Class \"Order\"", 5},
        {"(object ClassDiagram", 7},    {"(object Class \"Item\"", 9}, {"enum Color", 9},
        {"(object Association \"", 10}, {"root_subsystem", 12},
    };
    for (const auto& row : rows)
        for (std::size_t failing = 0; failing < allEntries.size(); ++failing) {
            SCOPED_TRACE(row.description + std::string(" at entry ") + allEntries[failing]);
            ModelBuilder builder;
            fill(builder, nullptr);
            const TemporaryPath path;
            KivOptionList options = optionsFor(path.get());
            RecordingLog failingLog;
            failingLog.onEntry = [&](const KivLogEntry&) {
                if (failingLog.entries.size() == failing + 1)
                    row.fail();
            };
            EXPECT_EQ(outcomeOf(builder.model, options, failingLog), row.outcome);
            const std::string part = path.content();
            EXPECT_TRUE(whole.starts_with(part));
            for (const auto& [text, entry] : firstEntryBehind)
                EXPECT_EQ(part.find(text) != std::string::npos, failing >= entry) << text;
            EXPECT_THAT(childNames(builder.model), ElementsAre("Logical View", "Orders", "Stock"));
            EXPECT_THAT(childNames(*builder.model.childPackages.at(0)), IsEmpty());
            expectNoTraces(builder.model);
        }
    ModelBuilder next;
    fill(next, nullptr);
    EXPECT_EQ(exportedFile(next.model), whole) << "the next run starts from the beginning";
}

// The exception that the host threw comes back, not another one with its message.
TEST(Failure, OfTheHostIsItsOwn)
{
    ModelBuilder builder;
    KivOptionList options = optionsFor("/dev/null");
    RecordingLog log;
    log.onEntry = [](const KivLogEntry&) { throw TaggedException(); };
    try {
        runPlugin(builder.model, options, log);
        ADD_FAILURE() << "nothing thrown";
    } catch (const TaggedException& exception) {
        EXPECT_EQ(exception.tag, 42);
    }
}

TEST(Failure, ToOpenLeavesTheModelAlone)
{
    const struct {
        const char* locale;
        const char* path;
        const char* identifier;
    } rows[] = {
        {"C", "/nowhere/to be/found.mdl", "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE"},
        {"C", "/nowhere/\xC3\xA4\xFF.mdl", "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE"},
        {"C", "", "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE"},
        {"C", "/", "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE"},
        {"C.UTF-8", "/nowhere/\xC3\xA4.mdl", "ROS_E_UNABLE_TO_OPEN_OUTPUT_FILE"},
        {"C.UTF-8", "/nowhere/\xFF.mdl", "BRIDGE_UNCONVERTIBLE_TEXT"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.locale) + " " + row.path);
        ASSERT_TRUE(std::setlocale(LC_ALL, row.locale));
        ModelBuilder builder;
        fill(builder, nullptr);
        KivOptionList options = optionsFor(row.path);
        RecordingLog log;
        EXPECT_EQ(failureOf(builder.model, options, log), row.identifier + std::string(" ") + row.path);
        EXPECT_THAT(log.entries, IsEmpty());
        EXPECT_THAT(childNames(builder.model), ElementsAre("Orders", "Stock"));
        expectNoTraces(builder.model);
        std::setlocale(LC_ALL, "C");
        exportedFile(builder.model);
    }
}

TEST(Failure, OfOneRunDoesNotReachTheModelOfAnother)
{
    ModelBuilder first;
    fill(first, nullptr);
    exportedFile(first.model);
    first.package("Later", first.model.childPackages.at(0));
    ModelBuilder second;
    fill(second, nullptr);
    KivOptionList options = optionsFor("/nowhere/found.mdl");
    RecordingLog log;
    EXPECT_THROW(runPlugin(second.model, options, log), KivException);
    EXPECT_THAT(childNames(first.model), ElementsAre("Logical View", "Orders", "Stock"));
    EXPECT_THAT(childNames(*first.model.childPackages.at(0)), ElementsAre("Later"));
    EXPECT_THAT(childNames(second.model), ElementsAre("Orders", "Stock"));
}

TEST(Failure, ToWriteIsNotReported)
{
    ModelBuilder builder;
    fill(builder, nullptr);
    KivOptionList options = optionsFor("/dev/full");
    RecordingLog log;
    EXPECT_EQ(runPlugin(builder.model, options, log), 1);
    EXPECT_EQ(log.entries.size(), 12U);
    EXPECT_THAT(childNames(builder.model), ElementsAre("Logical View", "Orders", "Stock"));
    expectNoTraces(builder.model);
}

namespace {

// More than the buffer holds; a class behind the other, with documentation that differs.
void fillLarge(ModelBuilder& builder)
{
    KivDesignPackage* const root = builder.package("Logical View");
    for (const char* const name : {"A", "B", "C"}) {
        KivDesignPackage* const package = builder.package(name, root);
        for (char text = 'a'; text <= 'z'; ++text)
            builder.addClass("Class", package)->description = KivString(std::string(20000, text));
    }
}

} // namespace

TEST(Failure, ToWriteLeavesABeginningOfTheFile)
{
    ModelBuilder builder;
    fillLarge(builder);
    const std::string whole = exportedFile(builder.model);
    ASSERT_GT(whole.size(), 1500000U);
    rlimit limit = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    for (const std::size_t room : {0U, 1U, 262143U, 262144U, 262145U, 300000U, 524288U, 786432U}) {
        SCOPED_TRACE(room);
        const TemporaryPath path;
        KivOptionList options = optionsFor(path.get());
        RecordingLog log;
        log.onEntry = [&](const KivLogEntry& entry) {
            if (entry.argument == "C") // by now writing has failed, and room is no help any more
                setrlimit(RLIMIT_FSIZE, &limit);
        };
        const rlimit smaller = {room, limit.rlim_max};
        ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &smaller), 0);
        EXPECT_EQ(runPlugin(builder.model, options, log), 1);
        EXPECT_TRUE(path.content() == whole.substr(0, room)) << path.content().size() << " bytes";
    }
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_TRUE(exportedFile(builder.model) == whole);
}

TEST(Failure, OfAThreadThatIsCancelledInAWriteLeavesABeginningOfTheFile)
{
#ifdef __has_feature
#if __has_feature(address_sanitizer)
    GTEST_SKIP() << "the sanitizer takes the stack that a cancelled write leaves for one in use";
#endif
#endif
    ModelBuilder builder;
    fillLarge(builder);
    const std::string whole = exportedFile(builder.model);
    for (const char* const package : {"A", "B", "C"}) {
        SCOPED_TRACE(package);
        const TemporaryPath path;
        KivOptionList options = optionsFor(path.get());
        RecordingLog log;
        log.onEntry = [&](const KivLogEntry& entry) {
            if (entry.argument == package)
                pthread_cancel(pthread_self()); // which waits for the next call that can take long
        };
        EXPECT_EQ(outcomeOf(builder.model, options, log), "the thread has ended");
        const std::string part = path.content();
        EXPECT_LT(part.size(), whole.size());
        EXPECT_TRUE(whole.starts_with(part)) << part.size() << " bytes";
        expectNoTraces(builder.model);
    }
    EXPECT_TRUE(exportedFile(builder.model) == whole);
}

TEST(Failure, DoesNotComeFromACancellationThatMeetsTheCleanup)
{
    ModelBuilder builder;
    fill(builder, builder.package("Logical View"));
    const TemporaryPath path;
    KivOptionList options = optionsFor(path.get());
    RecordingLog log;
    log.onEntry = [](const KivLogEntry&) { pthread_cancel(pthread_self()); }; // the first write is that of closing
    EXPECT_EQ(outcomeOf(builder.model, options, log), "nothing");
    EXPECT_EQ(path.content(), referenceFile());
    expectNoTraces(builder.model);
}

TEST(Failure, OfARunInsideARunLeavesTheOuterOneAlone)
{
    ModelBuilder builder;
    fill(builder, builder.package("Logical View"));
    ModelBuilder inner;
    fill(inner, nullptr);
    const TemporaryPath innerPath;
    int refused = 0;
    RecordingLog log;
    log.onEntry = [&](const KivLogEntry&) {
        for (KivModel* const model : {&builder.model, &inner.model}) {
            RecordingLog innerLog;
            KivOptionList options = optionsFor(innerPath.get(), {{BP_SUPPORTED_TYPES, "Java"}});
            refused += failureOf(*model, options, innerLog) == "ROS_E_EXPORT_RUNNING " ? 1 : 0;
            EXPECT_THAT(innerLog.entries, IsEmpty());
        }
    };
    EXPECT_EQ(exportedFile(builder.model, log), referenceFile());
    EXPECT_EQ(refused, 24);
    EXPECT_EQ(innerPath.content(), "");
    EXPECT_THAT(childNames(inner.model), ElementsAre("Orders", "Stock"));
}

TEST(Failure, OfAPackageTreeThatIsTooDeep)
{
    const struct {
        const char* description;
        int levels;
        bool isCycle;
        const char* tooDeep; // or null
    } rows[] = {
        {"512 levels", 512, false, nullptr},
        {"513 levels", 513, false, "Level 513"},
        {"100000 levels", 100000, false, "Level 513"},
        {"holds itself", 1, true, "Level 1"},
        {"two that hold each other", 2, true, "Level 1"},
        {"five in a circle", 5, true, "Level 3"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.description);
        ModelBuilder builder;
        KivPackage* deepest = nullptr;
        for (int level = 1; level <= row.levels; ++level)
            deepest = builder.package(KivString("Level " + std::to_string(level)), deepest);
        KivPackage* const top = builder.model.childPackages.at(0);
        if (row.isCycle)
            deepest->childPackages.add(top);
        const TemporaryPath path;
        KivOptionList options = optionsFor(path.get());
        RecordingLog log;
        EXPECT_EQ(failureOf(builder.model, options, log),
                  row.tooDeep ? "ROS_E_PACKAGES_NESTED_TOO_DEEP " + std::string(row.tooDeep) : "nothing");
        EXPECT_EQ(namesAfter(path.content(), "(object Class_Category \"Level ").size(), 512U);
        EXPECT_THAT(childNames(builder.model), ElementsAre("Logical View", "Level 1"));
        expectNoTraces(builder.model);
    }
}
