#include "modelfile/write/ModelOutput.h"

#include "kiv/KivConnecting.h"

#include <ostream>

namespace modelfile {

namespace {

void writeModel(const KivModel& model, Identities& identities, Losses& losses, std::ostream* stream)
{
    ModelOutput out(identities, losses, stream);
    out.json.beginObject();
    out.json.member("format", "kiv-model");
    out.json.member("version", 1);
    out.texts(model);
    if (!model.notes.isEmpty() || !model.projections.isEmpty() || model.modelLevel != 0)
        out.lose(model, "a model has no notes, no projections and no level in a model file");
    out.list("types", "type", model.types, model, [&](const KivType& type, std::size_t) { writeType(out, type); });
    writeContents(out, model, 0);
    out.json.endObject();
    out.flush();
}

// Collections that mirror references are not in a file: its reader makes them.
void requireConnected(KivModel& model, const Identities& identities, Losses& losses)
{
    const KivUnconnected unconnected = findUnconnected(model);
    if (unconnected.owner)
        losses.add(identities.describe(*unconnected.owner),
                   std::string("its ") + unconnected.collection +
                       " are not those, or not in the order, of a pass over the model");
}

std::vector<ModelFileLoss> write(KivModel& model, std::ostream& stream, const KivIdOf& idOf, bool mayLose)
{
    Losses losses(mayLose);
    Identities identities(idOf, losses);
    writeModel(model, identities, losses, nullptr);
    requireConnected(model, identities, losses);
    identities.giveIds();
    std::vector<ModelFileLoss> result = losses.take();
    Losses sameAgain(true);
    writeModel(model, identities, sameAgain, &stream);
    return result;
}

} // namespace

} // namespace modelfile

void writeModelFile(KivModel& model, std::ostream& stream, const KivIdOf& idOf)
{
    modelfile::write(model, stream, idOf, false);
}

std::vector<ModelFileLoss> writeModelFileWithLosses(KivModel& model, std::ostream& stream, const KivIdOf& idOf)
{
    return modelfile::write(model, stream, idOf, true);
}
