#include "render/Draw.h"

#include "reader/index/Behaviour.h"
#include "render/scene/Labels.h"

#include <algorithm>
#include <unordered_map>

namespace render {

namespace {

// The numbers of the messages of a diagram, if the model shows them in such diagrams: their order, or for those beside
// links what the file gives them. Each label of a message counts.
class MessageNumbers {
public:
    explicit MessageNumbers(const Scene& scene)
    {
        std::vector<std::pair<std::int64_t, const Object*>> inOrder;
        for (const Object* const view : scene.others())
            if (view->is("InterMessView", "SelfMessView", "MessView"))
                inOrder.emplace_back(ordinalOf(scene.context(), *view), view);
        std::stable_sort(inOrder.begin(), inOrder.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
        std::size_t next = 1;
        for (const auto& [ordinal, view] : inOrder) {
            const std::string given = sequenceOf(scene.context(), *view);
            const std::size_t count = std::max<std::size_t>(labelsOf(*view), 1);
            if (isNumbered(scene.context(), *view))
                for (std::size_t i = 0; i < count; ++i)
                    numbers[view].push_back((given.empty() ? std::to_string(next + i) : given) + ": ");
            next += count;
        }
    }

    /// One for each label.
    [[nodiscard]] std::vector<std::string> of(const Object* view) const
    {
        const auto found = numbers.find(view);
        return found == numbers.end() ? std::vector<std::string>() : found->second;
    }

private:
    static bool isNumbered(const Context& context, const Object& view)
    {
        return reader::areMessagesNumbered(context.defaults, !view.is("MessView"));
    }

    static std::size_t labelsOf(const Object& view)
    {
        const auto isLabel = [](const reader::Attribute& attribute) {
            const Object* const object = attribute.value.asObject();
            return object && object->is("SegLabel", "ItemLabel");
        };
        return static_cast<std::size_t>(std::count_if(view.attributes().begin(), view.attributes().end(), isLabel));
    }

    static std::int64_t ordinalOf(const Context& context, const Object& view)
    {
        const Object* const message = view.has("ordinal") ? &view : messageOf(context, view);
        return message ? message->integer("ordinal") : 0;
    }

    static std::string sequenceOf(const Context& context, const Object& view)
    {
        const Object* const message = view.is("MessView") ? messageOf(context, view) : nullptr;
        return message ? lineOf(*message, "sequence") : std::string();
    }

    std::unordered_map<const Object*, std::vector<std::string>> numbers;
};

// What is larger is drawn first, so that it hides nothing that stands in it.
std::vector<const Node*> largestFirst(const Scene& scene)
{
    std::vector<const Node*> nodes;
    for (const Node& node : scene.nodes())
        nodes.push_back(&node);
    std::stable_sort(nodes.begin(), nodes.end(), [](const Node* a, const Node* b) {
        return a->rect.width() * a->rect.height() > b->rect.width() * b->rect.height();
    });
    return nodes;
}

void draw(const Scene& scene, Svg& svg)
{
    const MessageNumbers numbers(scene);
    Labels labels(scene, svg);
    for (const Object* const view : scene.others())
        if (view->is("Swimlane"))
            drawOther(scene, *view, {}, svg, labels);
    for (const Node* const node : largestFirst(scene))
        drawNode(scene.context(), *node, svg);
    for (const Line& line : scene.lines())
        drawLine(scene.context(), line, svg, labels);
    for (const Object* const view : scene.others())
        if (!view->is("Swimlane"))
            drawOther(scene, *view, numbers.of(view), svg, labels);
}

// Finding the fonts takes longer than a picture.
const TextMeasure& machineFonts()
{
    thread_local const PangoMeasure measure;
    return measure;
}

} // namespace

std::string svgOf(const reader::Document& document, const reader::Index& index, const reader::Diagram& diagram,
                  const DrawOptions& options)
{
    const TextMeasure& measure = options.measure ? *options.measure : machineFonts();
    const Context context(
        document, index, diagram, measure, options.warn ? options.warn : [](const std::string& /*text*/) {});
    const Scene scene(context);
    Svg svg(options.mostElements);
    draw(scene, svg);
    if (svg.isCut())
        context.warn("there is too much in it; the rest is left out");
    if (svg.hasTooManyDashes())
        context.warn("there are too many long dashed lines in it; the rest of them is not dashed");
    if (svg.hasTooManyFonts())
        context.warn("there are too many fonts in it; Arial stands for the rest of them");
    return svg.finished(options.idPrefix + "diagram", cleanText(diagram.name));
}

} // namespace render
