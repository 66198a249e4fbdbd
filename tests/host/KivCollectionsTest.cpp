#include "Allocations.h"

#include "kiv/KivPackage.h"

#include <algorithm>
#include <ctime>
#include <deque>
#include <gmock/gmock.h>
#include <random>
#include <string>
#include <vector>

namespace {

// Time that the process computes, so that a busy machine makes no difference.
double computedSeconds()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

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

TYPED_TEST(KivCollections, TakeALimitedNumberOfStepsAtAnySize)
{
    constexpr std::size_t count = 100'000;
    std::deque<KivPackage> packages(count);
    std::vector<KivPackage*> order;
    for (std::size_t i = 0; i < count; ++i) {
        packages[i].setName(KivString(std::to_string(i)));
        order.push_back(&packages[i]);
    }
    std::shuffle(order.begin(), order.end(), std::mt19937(1));
    std::size_t found = 0;
    const double start = computedSeconds();
    TypeParam collection;
    for (KivPackage& package : packages)
        collection.add(&package);
    for (const KivPackage* const package : order) {
        const std::size_t index = collection.indexOf(package);
        found += collection.at(index) == package ? 1U : 0U;
        found += collection.contains(package) ? 1U : 0U;
        if constexpr (Compared<TypeParam>::isNamed)
            found += collection.find(package->getName()) == package ? 0U : count;
        collection.remove(package);
    }
    EXPECT_LT(computedSeconds() - start, 0.9);
    EXPECT_EQ(found, 2 * count);
    EXPECT_TRUE(collection.isEmpty());
}

TYPED_TEST(KivCollections, KeepTheirMemoryInBounds)
{
    std::deque<KivPackage> packages(1000);
    TypeParam collection;
    for (int round = 0; round < 1000; ++round) { // a queue: everything added leaves at the front
        collection.add(&packages[static_cast<std::size_t>(round)]);
        if (round >= 20)
            collection.remove(collection.at(0));
    }
    const std::size_t before = allocationCount();
    for (int round = 0; round < 10'000; ++round) {
        KivPackage* const front = collection.at(0);
        collection.remove(front);
        collection.add(front);
    }
    EXPECT_LT(allocationCount() - before, 100U);
}

TYPED_TEST(KivCollections, AddWithoutAllocatingAfterReserve)
{
    std::deque<KivPackage> packages(200);
    for (const std::size_t first : {0U, 5U, 8U, 20U, 100U})
        for (const std::size_t more : {3U, 100U}) {
            TypeParam collection;
            for (std::size_t i = 0; i < first; ++i)
                collection.add(&packages[i]);
            for (std::size_t i = 1; i < 4 && i + 1 < first; ++i)
                collection.remove(&packages[i]); // leaves a hole
            collection.reserve(more);
            const std::size_t before = allocationCount();
            for (std::size_t i = 0; i < more; ++i)
                collection.add(&packages[first + i]);
            EXPECT_EQ(allocationCount(), before) << first << " before, " << more << " more";
        }
    if constexpr (!Compared<TypeParam>::isVector)
        for (const bool hasHole : {false, true})
            for (const bool wasSearched : {false, true}) {
                TypeParam collection;
                for (std::size_t i = 0; i < 20; ++i)
                    collection.addNew(&packages[i]);
                if (wasSearched) {
                    EXPECT_TRUE(collection.contains(&packages[10]));
                }
                if (hasHole)
                    collection.remove(&packages[10]);
                collection.reserveNew(100);
                const std::size_t before = allocationCount();
                for (std::size_t i = 20; i < 120; ++i)
                    collection.addNew(&packages[i]);
                EXPECT_EQ(allocationCount(), before) << "hole: " << hasHole << ", searched: " << wasSearched;
                EXPECT_EQ(collection.indexOf(&packages[119]), hasHole ? 118U : 119U);
            }
    if constexpr (Compared<TypeParam>::isVector)
        for (const std::size_t distinct : {1U, 20U}) {
            TypeParam collection;
            for (std::size_t i = 0; i < 20; ++i)
                collection.add(&packages[i % distinct]);
            collection.reserve(20);
            const std::size_t before = allocationCount();
            for (std::size_t i = 0; i < 20; ++i)
                collection.add(&packages[i]);
            EXPECT_EQ(allocationCount(), before) << "again one of " << distinct << " that stand there";
        }
}

TYPED_TEST(KivCollections, StayAsTheyWereWhenThereIsNoMemory)
{
    std::deque<KivPackage> packages(70);
    for (const std::size_t first : {0U, 8U, 32U, 64U})
        for (std::size_t before = 0; before < 8; ++before) {
            Compared<TypeParam> compared;
            for (std::size_t i = 0; i < first; ++i)
                compared.add(&packages[i]);
            bool isThrown = false;
            {
                const RefusedAllocation refused(before);
                try {
                    compared.collection.add(&packages[first]);
                } catch (const std::bad_alloc&) {
                    isThrown = true;
                }
            }
            if (!isThrown)
                compared.plain.push_back(&packages[first]);
            compared.checkAll();
            KivPackage* const middle = first == 0 ? nullptr : compared.plain[first / 2];
            {
                const RefusedAllocation refused(before);
                try {
                    isThrown = false;
                    compared.collection.remove(middle);
                } catch (const std::bad_alloc&) {
                    isThrown = true;
                }
            }
            if (!isThrown && middle)
                compared.plain.erase(compared.plain.begin() + static_cast<std::ptrdiff_t>(first / 2));
            compared.checkAll();
            compared.check(middle, "");
            ASSERT_FALSE(this->HasFatalFailure()) << first << ", refused after " << before;
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

TEST(KivPackages, MoveToAnotherPackageInNoTime)
{
    constexpr std::size_t count = 100'000;
    for (const bool fromFront : {true, false}) {
        KivModel model;
        auto* const target = model.create<KivDesignPackage>();
        model.addChildPackage(target);
        for (std::size_t i = 0; i < count; ++i) {
            auto* const package = model.create<KivDesignPackage>();
            package->setName(KivString(std::to_string(i)));
            model.addChildPackage(package);
        }
        const double start = computedSeconds();
        EXPECT_NE(model.childPackages.find("500"), nullptr);
        while (model.childPackages.count() > 1) {
            KivPackage* const package = model.childPackages.at(fromFront ? 1 : model.childPackages.count() - 1);
            target->addChildPackage(package);
            ASSERT_EQ(package->getParent(), target);
        }
        EXPECT_EQ(target->childPackages.find("99999")->getName(), "99999");
        EXPECT_EQ(model.childPackages.find("500"), nullptr);
        EXPECT_LT(computedSeconds() - start, 0.9) << (fromFront ? "from the front" : "from the back");
        EXPECT_EQ(target->childPackages.at(0)->getName(), fromFront ? "0" : "99999");
        EXPECT_EQ(target->childPackages.count(), count);
    }
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
