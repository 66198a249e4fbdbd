#include "ExportWords.h"
#include "kiv/KivIbmRationalRose98ExportDllInterface.h"
#include "kiv/KivModelFile.h"
#include "MemoryFile.h"
#include "PetalScanner.h"
#include "Target.h"

#include <cctype>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

// A model file; words in the model's description choose the options (ExportWords.h).
namespace {

// Every pair of a supertype and a subtype is written, and drawn on every diagram that shows the generalization. Beyond
// this many an input only costs time.
constexpr std::size_t mostPairs = 20000;

struct SilentLog : KivLog {
    void add(const KivLogEntry& entry) override { (void)entry; }
};

// How much the generalizations and diagrams of a model multiply.
class PairCount : public KivTraversalOperation {
public:
    void post_process(KivObject* object, void* /*context*/) override
    {
        if (object->elementType == KivElementType::ClassDiagram)
            ++diagrams;
        if (object->elementType != KivElementType::Generalization)
            return;
        const auto& generalization = static_cast<const KivGeneralization&>(*object);
        pairs += generalization.supertypes.count() * generalization.subtypes.count();
    }
    [[nodiscard]] std::size_t written() const { return pairs * (1 + diagrams); }

private:
    std::size_t pairs = 0;
    std::size_t diagrams = 0;
};

class TraceSearch : public KivTraversalOperation {
public:
    void post_process(KivObject* object, void* /*context*/) override
    {
        if (object->isInstanceOf(KivElementType::ModelObject))
            require(static_cast<KivModelObject*>(object)->pid == 0, "no number after an export");
    }
};

class ObjectList : public KivTraversalOperation {
public:
    void post_process(KivObject* object, void* /*context*/) override
    {
        if (object->isInstanceOf(KivElementType::ModelObject))
            objects.push_back(static_cast<KivModelObject*>(object));
    }
    std::vector<KivModelObject*> objects;
};

KivString repeated(const KivString& text)
{
    constexpr std::size_t moreThanBuffer = 300000;
    KivString result;
    while (result.length() < moreThanBuffer)
        result.add(text.view());
    return result;
}

// What `enlargingWord` stands for.
void enlarge(KivModel& model)
{
    constexpr int moreThanNumbers = 3100;
    constexpr int few = 2;
    ObjectList list;
    model.depthTraversal(list, nullptr);
    int names = 1;
    int descriptions = few;
    int stereotypes = few;
    int diagrams = 1;
    for (KivModelObject* const object : list.objects) {
        if (object == &model)
            continue;
        if (!object->getName().isEmpty() && names-- > 0)
            object->setName(repeated(object->getName()));
        if (!object->description.isEmpty() && descriptions-- > 0)
            object->description = repeated(object->description);
        if (!object->stereotype.isEmpty() && stereotypes-- > 0)
            object->stereotype = repeated(object->stereotype);
        if (object->elementType == KivElementType::ClassDiagram && !object->notes.isEmpty() && diagrams-- > 0)
            for (int i = 0; i < moreThanNumbers; ++i)
                object->notes.add(model.create<KivNote>());
    }
}

LoadedModel load(std::string_view text)
{
    LoadedModel loaded = parseModel(std::string(text), "fuzzed");
    if (loaded.model->description.view().find(enlargingWord) != std::string_view::npos)
        enlarge(*loaded.model);
    return loaded;
}

KivOptionList optionsOf(const KivModel& model)
{
    KivOptionList options;
    KivIbmRationalRose98ExportDllInterface().getOptionList(options);
    std::vector<KivString> scales = {BP_X_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM.getName(),
                                     BP_Y_SCALE__IN____FOR_OBJECT_MODEL_DIAGRAM.getName()};
    std::string_view words = model.description.view();
    while (!words.empty()) {
        const std::string_view word = words.substr(0, words.find(' '));
        words.remove_prefix(std::min(word.size() + 1, words.size()));
        for (const ExportWord& each : exportWords)
            if (each.word == word)
                options.setValue(KivString(each.option), KivString(each.value));
        if (!scales.empty() && word.find_first_of("0123456789") <= 1) {
            options.setValue(scales.front(), KivString(word));
            scales.erase(scales.begin());
        }
    }
    return options;
}

std::string exported(KivModel& model)
{
    const MemoryFile file;
    KivOptionList options = optionsOf(model);
    options.setValue(BP_FILE.getName(), KivString(std::string_view(file.path())));
    SilentLog log;
    const int result = KivIbmRationalRose98ExportDllInterface().run("fuzzed", model, options, log);
    require(result == 1, "1 as the result");
    return file.content();
}

LoadedModel writtenAndRead(KivModel& model)
{
    std::ostringstream stream;
    writeModelFile(model, stream);
    return parseModel(stream.str(), "written");
}

void expectNoTraces(KivModel& model)
{
    TraceSearch search;
    model.depthTraversal(search, nullptr);
    for (const KivType* const type : model.types)
        require(!type->generalPointer, "no mark on a type after an export");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text = asText(data, size);
    LoadedModel loaded;
    try {
        loaded = load(text);
    } catch (const ModelFileError&) {
        return 0;
    }
    KivModel& model = *loaded.model;
    PairCount pairs;
    model.depthTraversal(pairs, nullptr);
    if (pairs.written() > mostPairs)
        return 0;

    const std::string file = exported(model);
    require(findPetalFault(file).empty(), findPetalFault(file));
    expectNoTraces(model);
    require(exported(*writtenAndRead(*load(text).model).model) == file, "the same file for a model that was written");

    // The first two runs bring every package to where it stays. The further ones are for a part of the inputs.
    constexpr std::size_t rerunPart = 4;
    if (size % rerunPart != 0)
        return 0;
    (void)exported(model);
    const std::string again = exported(model);
    require(exported(model) == again, "the same file for a model that has been exported");
    expectNoTraces(model);
    return 0;
}
