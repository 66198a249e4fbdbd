#include "modelfile/write/Identities.h"

#include "text/Utf8.h"

namespace modelfile {

void Losses::add(std::string object, std::string reason)
{
    if (!areAllowed)
        throw ModelFileLossError(object + ": " + reason);
    losses.push_back({std::move(object), std::move(reason)});
}

bool Identities::enter(const KivObject& object, const char* kind, const KivObject* holder)
{
    if (areIdsGiven) {
        const auto found = places.find(&object);
        return found != places.end() && !std::exchange(objects[found->second].isWritten, true);
    }
    if (places.try_emplace(&object, objects.size()).second) {
        objects.push_back({&object, holder, kind, false, false, {}});
        return true;
    }
    losses.add(describe(object), "it stands in the model twice");
    return false;
}

void Identities::refer(const KivObject& from, const KivObject& target)
{
    if (!areIdsGiven)
        referrals.push_back({&from, &target});
}

void Identities::giveIds()
{
    followReferrals();
    takeGivenIds();
    for (Held& held : objects)
        if (held.isReferred && held.id.empty())
            held.id = unusedId(held);
    areIdsGiven = true;
}

void Identities::followReferrals()
{
    for (const Referral& referral : referrals) {
        const auto found = places.find(referral.target);
        if (found != places.end())
            objects[found->second].isReferred = true;
        else
            losses.add(describe(*referral.from), "it refers to an object that stands nowhere in the model");
    }
    referrals = {};
}

void Identities::takeGivenIds()
{
    if (!idOf)
        return;
    for (Held& held : objects) {
        std::string id = idOf(*held.object);
        if (id.empty())
            continue;
        if (!text::isWellFormed(id))
            losses.add(describe(*held.object), "its id is no UTF-8");
        else if (!taken.insert(id).second)
            losses.add(describe(*held.object), "its id \"" + id + "\" is that of another object");
        else
            held.id = std::move(id);
    }
}

std::string Identities::unusedId(const Held& held)
{
    const std::string path = describe(*held.object);
    std::size_t& number = repeats[path];
    std::string id;
    do
        id = ++number == 1 ? path : path + " " + std::to_string(number);
    while (!taken.insert(id).second);
    return id;
}

const Identities::Held* Identities::find(const KivObject& object) const
{
    const auto found = places.find(&object);
    return found == places.end() ? nullptr : &objects[found->second];
}

const std::string& Identities::id(const KivObject& object) const
{
    static const std::string none;
    const Held* const held = find(object);
    return held ? held->id : none;
}

std::string Identities::describe(const KivObject& object) const
{
    const Held* held = find(object);
    if (!held)
        return "the model";
    const std::string kind = held->kind;
    std::string path = text::mended(held->object->getName().view());
    while (held->holder && (held = find(*held->holder)))
        path.insert(0, text::mended(held->object->getName().view()) + "/");
    return kind + " " + path;
}

} // namespace modelfile
