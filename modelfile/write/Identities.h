#pragma once

#include "kiv/KivModelFile.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace modelfile {

/// What a model file cannot say, as it is found. Unless losses are allowed the first one ends the writing.
class Losses {
public:
    explicit Losses(bool theyAreAllowed) : areAllowed(theyAreAllowed) {}

    /// Throws ModelFileLossError when losses are not allowed.
    void add(std::string object, std::string reason);
    [[nodiscard]] std::vector<ModelFileLoss> take() { return std::move(losses); }

private:
    bool areAllowed;
    std::vector<ModelFileLoss> losses;
};

/// The objects that a file holds, where they stand, and their ids. A first walk through the model enters them and what
/// refers to what; then the ids are given, and a second walk writes.
class Identities {
public:
    Identities(const KivIdOf& theIdOf, Losses& theLosses) : idOf(theIdOf), losses(theLosses) {}

    /// Called for each object in the order of the file. False for one that stood in the file before, which is not
    /// written again.
    [[nodiscard]] bool enter(const KivObject& object, const char* kind, const KivObject* holder);
    /// Called for each reference.
    void refer(const KivObject& from, const KivObject& target);
    /// Ends the first walk.
    void giveIds();

    /// Empty for an object that has none, and for one that is not in the file.
    [[nodiscard]] const std::string& id(const KivObject& object) const;
    /// Whether a reference to the object can be written; before the ids are given every one can.
    [[nodiscard]] bool canReferTo(const KivObject& object) const { return !areIdsGiven || !id(object).empty(); }
    /// What messages call an object: `class Bank/Account`.
    [[nodiscard]] std::string describe(const KivObject& object) const;

private:
    struct Held {
        const KivObject* object;
        const KivObject* holder; // null: the model
        const char* kind;
        bool isReferred = false;
        bool isWritten = false;
        std::string id;
    };
    struct Referral {
        const KivObject* from;
        const KivObject* target;
    };

    [[nodiscard]] const Held* find(const KivObject& object) const;
    void followReferrals();
    void takeGivenIds();
    [[nodiscard]] std::string unusedId(const Held& held);

    const KivIdOf& idOf;
    Losses& losses;
    bool areIdsGiven = false;
    std::vector<Held> objects; // in the order of the file
    std::unordered_map<const KivObject*, std::size_t> places;
    std::vector<Referral> referrals;
    std::unordered_set<std::string> taken;
    std::unordered_map<std::string, std::size_t> repeats; // how many objects have that kind and path
};

} // namespace modelfile
