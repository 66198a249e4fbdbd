#include "Allocations.h"
#include "Steps.h"

#include "kiv/KivPackage.h"

#include <algorithm>
#include <deque>
#include <gmock/gmock.h>
#include <random>
#include <string>
#include <vector>

namespace {

// A collection as its contract describes it, every operation done in the plainest way.
template <class Collection>
class Compared {
public:
    static constexpr bool isVector = std::is_same_v<Collection, KivVector<KivPackage>>;
    static constexpr bool isNamed = std::is_same_v<Collection, KivNameLinkTree<KivPackage>>;

    void add(KivPackage* package)
    {
        if constexpr (isVector) {
            collection.add(package);
            plain.push_back(package);
        } else {
            const bool isNew = package && indexOf(package) == KivSequence::npos;
            ASSERT_EQ(collection.add(package), isNew);
            if (isNew)
                plain.push_back(package);
        }
    }
    void remove(KivPackage* package)
    {
        const auto found = std::find(plain.begin(), plain.end(), package);
        ASSERT_EQ(collection.remove(package), found != plain.end());
        if (found != plain.end())
            plain.erase(found);
    }
    void rename(KivPackage* package, const KivString& name)
    {
        const KivString before = package->getName();
        package->setName(name);
        if constexpr (isNamed)
            collection.rename(package, before);
    }
    void removeAll()
    {
        collection.removeAll();
        plain.clear();
    }
    [[nodiscard]] std::size_t indexOf(const KivPackage* package) const
    {
        const auto found = std::find(plain.begin(), plain.end(), package);
        return found == plain.end() ? KivSequence::npos : static_cast<std::size_t>(found - plain.begin());
    }
    void check(const KivPackage* package, const KivString& name) const
    {
        ASSERT_EQ(collection.count(), plain.size());
        ASSERT_EQ(collection.isEmpty(), plain.empty());
        ASSERT_EQ(collection.indexOf(package), indexOf(package));
        ASSERT_EQ(collection.contains(package), indexOf(package) != KivSequence::npos);
        if constexpr (isNamed) {
            const auto found =
                std::find_if(plain.begin(), plain.end(), [&](const auto* each) { return each->getName() == name; });
            ASSERT_EQ(collection.find(name), found == plain.end() ? nullptr : *found) << name.text();
        }
    }
    void checkAll() const { ASSERT_TRUE(std::equal(collection.begin(), collection.end(), plain.begin(), plain.end())); }

    Collection collection;
    std::vector<KivPackage*> plain;
};

template <class Collection>
class KivCollections : public testing::Test {
};
using Kinds = testing::Types<KivVector<KivPackage>, KivLinkTree<KivPackage>, KivNameLinkTree<KivPackage>>;
TYPED_TEST_SUITE(KivCollections, Kinds);

TYPED_TEST(KivCollections, BehaveLikePlainLists)
{
    // Few objects keep a collection around the size at which it begins to index; many make it move and regrow.
    for (const std::size_t objectCount : {3U, 12U, 40U, 1000U}) {
        std::mt19937 random(static_cast<unsigned>(objectCount));
        const auto below = [&](std::size_t end) { return random() % end; };
        std::deque<KivPackage> packages(objectCount);
        const auto anyName = [&] { return KivString(std::to_string(below(objectCount / 2 + 1))); };
        for (KivPackage& package : packages)
            package.setName(anyName());
        const auto any = [&] { return below(20) == 0 ? nullptr : &packages[below(objectCount)]; };

        Compared<TypeParam> compared;
        bool isGrowing = true;
        for (int step = 0; step < 12'000; ++step) {
            SCOPED_TRACE(testing::Message() << objectCount << " objects, step " << step);
            if (below(objectCount) == 0)
                isGrowing = below(2) == 0;
            const auto& plain = compared.plain;
            const std::size_t choice = below(100);
            if (choice < (isGrowing ? 60U : 25U))
                compared.add(any());
            else if (choice < 70 && !plain.empty())
                compared.remove(plain[below(plain.size())]);
            else if (choice < 76 && !plain.empty())
                compared.remove(plain.front());
            else if (choice < 84 && !plain.empty())
                compared.remove(plain.back());
            else if (choice < 90)
                compared.remove(any());
            else if (choice < 97)
                compared.rename(&packages[below(objectCount)], anyName());
            else if (choice < 99)
                compared.collection.reserve(below(50));
            else if (below(20) == 0)
                compared.removeAll();
            compared.check(any(), anyName());
            if (!plain.empty()) {
                const std::size_t index = below(plain.size());
                ASSERT_EQ(compared.collection.at(index), plain[index]);
            }
            if (step % 16 == 0)
                compared.checkAll();
            if (this->HasFatalFailure())
                return;
        }
    }
}

// What is done over and over again with a collection of growing size, and must not cost more for it.
template <class Collection>
class Pattern {
public:
    explicit Pattern(std::size_t count) : packages(count + extra)
    {
        for (std::size_t i = 0; i < packages.size(); ++i)
            packages[i].setName(KivString(std::to_string(i)));
        for (std::size_t i = 0; i < count; ++i)
            collection.add(&packages[i]);
    }

    // So that the index is there; to make it, every element is looked at.
    void ask()
    {
        for (int time = 0; time < 10; ++time) {
            found += collection.contains(next()) ? 1U : 0U;
            if constexpr (std::is_same_v<Collection, KivNameLinkTree<KivPackage>>)
                found += collection.find("10") ? 1U : 0U;
        }
    }
    void removeAt(std::size_t index) { collection.remove(collection.at(index)); }
    void removeFromEnd(std::size_t distance) { removeAt(collection.count() - 1 - distance); }
    // A package that is not in the collection.
    KivPackage* next() { return &packages[packages.size() - 1 - added % extra]; }
    void addNext()
    {
        collection.add(next());
        ++added;
    }
    void addAgain(KivPackage* package) { collection.add(package); }
    KivPackage* last() const { return collection.at(collection.count() - 1); }

    Collection collection;
    std::size_t found = 0;

private:
    static constexpr std::size_t extra = 10;
    std::deque<KivPackage> packages;
    std::size_t added = 0;
};

TYPED_TEST(KivCollections, CostNoMoreForTheirSize)
{
    using P = Pattern<TypeParam>;
    struct Row {
        const char* name;
        bool isAsked;
        void (*step)(P&);
    };
    std::vector<Row> rows = {
        {"pairs from the front", false,
         [](P& p) {
             p.removeAt(1);
             p.removeAt(0);
         }},
        {"pairs from the end, asked before", true,
         [](P& p) {
             p.removeFromEnd(1);
             p.removeFromEnd(0);
         }},
        {"asking between removals", true,
         [](P& p) {
             p.removeAt(3);
             p.found += p.collection.indexOf(p.last()) + (p.collection.contains(p.next()) ? 1U : 0U);
         }},
        {"a queue that is asked", true,
         [](P& p) {
             p.removeAt(0);
             p.addNext();
             p.found += p.collection.indexOf(p.last());
         }},
        {"removing what is not there", true, [](P& p) { p.collection.remove(p.next()); }},
    };
    if constexpr (std::is_same_v<TypeParam, KivVector<KivPackage>>)
        rows.push_back({"the first of two", true, [](P& p) {
                            p.addAgain(p.collection.at(0));
                            p.removeAt(0);
                            p.found += p.collection.indexOf(p.last());
                        }});
    if constexpr (std::is_same_v<TypeParam, KivNameLinkTree<KivPackage>>)
        rows.push_back({"finding what got another name", true, [](P& p) {
                            KivPackage* const package = p.collection.at(p.collection.count() / 2);
                            const KivString before = package->getName();
                            package->setName(before == "x" ? "y" : "x");
                            p.collection.rename(package, before);
                            p.removeAt(2);
                            p.found += p.collection.find(package->getName()) == package ? 1U : 0U;
                        }});
    for (const Row& row : rows) {
        std::size_t steps[2];
        for (const bool isLarge : {false, true}) {
            constexpr int times = 2;
            P pattern(isLarge ? 3200 : 100);
            pattern.collection.reserve(times);
            if (row.isAsked)
                pattern.ask();
            steps[isLarge ? 1 : 0] = stepsOf([&] {
                for (int time = 0; time < times; ++time)
                    row.step(pattern);
            });
        }
        EXPECT_LE(steps[1], 3 * steps[0]) << row.name;
    }
}

TYPED_TEST(KivCollections, KeepTheirMemoryInBounds)
{
    std::deque<KivPackage> packages(20);
    TypeParam collection;
    for (KivPackage& package : packages)
        collection.add(&package);
    KivPackage* const front = collection.at(0);
    const std::size_t before = allocatedBytes();
    for (int round = 0; round < 10'000; ++round) { // a queue: what leaves at the front comes back at the end
        KivPackage* const package = collection.at(0);
        collection.remove(package);
        collection.add(package);
    }
    EXPECT_EQ(collection.at(0), front);
    EXPECT_LT(allocatedBytes() - before, 10'000U * 200);
}

TYPED_TEST(KivCollections, AddWithoutFailingAfterReserve)
{
    std::deque<KivPackage> packages(200);
    for (const std::size_t first : {0U, 5U, 20U, 100U})
        for (const bool isAsked : {false, true})
            for (std::size_t before = 0; before < 12; ++before) {
                Compared<TypeParam> compared;
                for (std::size_t i = 0; i < first; ++i)
                    compared.add(&packages[i]);
                for (int time = 0; isAsked && time < 10; ++time)
                    compared.check(&packages[0], "");
                compared.collection.reserve(30);
                {
                    const RefusedAllocation refused(before);
                    for (std::size_t i = 1; i < 5 && i + 1 < first; ++i)
                        compared.remove(&packages[i]);
                    for (std::size_t i = 0; i < 30; ++i)
                        compared.collection.add(&packages[first + i]);
                }
                for (std::size_t i = 0; i < 30; ++i)
                    compared.plain.push_back(&packages[first + i]);
                compared.checkAll();
                compared.check(&packages[first + 29], "");
                ASSERT_FALSE(this->HasFatalFailure())
                    << first << ", asked: " << isAsked << ", refused after " << before;
            }
}

// The same again for every allocation, refused once: what it was needed for is then done another time.
TYPED_TEST(KivCollections, StayAsTheyWereWhenThereIsNoMemory)
{
    bool isRefused = true;
    for (std::size_t before = 0; isRefused; ++before) {
        SCOPED_TRACE(testing::Message() << "refused after " << before);
        std::deque<KivPackage> packages(60);
        Compared<TypeParam> compared;
        compared.plain.reserve(packages.size());
        const RefusedAllocation refused(before);
        const auto add = [&](KivPackage& package) {
            try {
                compared.collection.add(&package);
            } catch (const std::bad_alloc&) {
                compared.checkAll();
                compared.collection.add(&package);
            }
            compared.plain.push_back(&package);
        };
        for (std::size_t i = 0; i < 30; ++i)
            add(packages[i]);
        for (int time = 0; time < 8; ++time)
            compared.check(&packages[20], "");
        compared.remove(&packages[12]);
        compared.remove(&packages[1]);
        for (std::size_t i = 30; i < packages.size(); ++i) {
            add(packages[i]);
            compared.check(&packages[i / 2], "");
        }
        compared.checkAll();
        isRefused = refused.happened();
        ASSERT_FALSE(this->HasFatalFailure());
    }
}

TEST(KivKeyMappings, KeepsKeyAndCounterpartTogetherWhenThereIsNoMemory)
{
    KivCandidateKey key;
    KivForeignKey other;
    KivClass counterpart;
    for (std::size_t before = 0; before < 40; ++before) {
        KivKeyMappings mappings;
        for (int i = 0; i < 20; ++i) {
            const std::size_t count = mappings.count();
            try {
                const RefusedAllocation refused(before);
                mappings.add({&key, &counterpart});
            } catch (const std::bad_alloc&) {
                ASSERT_EQ(mappings.count(), count);
            }
        }
        mappings.add({&other, &key});
        EXPECT_EQ(mappings.counterpartOf(&other), &key) << "refused after " << before;
    }
}

// From the front and from the end, one by one and in pairs, as many others stay behind.
TEST(KivPackages, MoveWithoutALookAtTheOthers)
{
    const auto stepsFor = [](std::size_t count) {
        KivModel model;
        auto* const target = model.create<KivDesignPackage>();
        for (std::size_t i = 0; i < count; ++i)
            model.addChildPackage(model.create<KivDesignPackage>());
        target->reserveChildPackages(20);
        return stepsOf([&] {
            const auto& children = model.childPackages;
            for (int time = 0; time < 3; ++time) {
                target->addChildPackage(children.at(0));
                target->addChildPackage(children.at(1));
                model.removeChildPackage(children.at(0));
                target->addChildPackage(children.at(children.count() - 1));
                model.removeChildPackage(children.at(children.count() - 2));
                model.removeChildPackage(children.at(children.count() - 1));
                model.removeChildPackage(target);
            }
        });
    };
    EXPECT_LT(stepsFor(3200), 2 * stepsFor(100));
}

TEST(KivPositionView, SortsByPositionAndKeepsTheOrderOfEquals)
{
    std::deque<KivTypeValue> values(6);
    constexpr std::array<std::int16_t, 6> positions = {3, -1, 3, 0, -1, 32767};
    KivVector<KivTypeValue> collection;
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i].position = positions[i];
        collection.add(&values[i]);
        collection.add(nullptr);
    }
    KivTypeValueByPosition view;
    for (int time = 0; time < 2; ++time) { // filling replaces what was there
        view.fill(collection);
        EXPECT_THAT(std::vector<KivTypeValue*>(view.begin(), view.end()),
                    testing::ElementsAre(&values[1], &values[4], &values[3], &values[0], &values[2], &values[5]));
    }
    view.removeAll();
    EXPECT_EQ(view.count(), 0U);
}

} // namespace
