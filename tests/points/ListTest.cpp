#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "points/KoPointList.h"
#include "points/TKoListHeader.h"

namespace {

// A record that counts its live instances, to see who deletes what.
struct Rec : KoListnode {
    static inline int alive = 0;
    explicit Rec(std::uint32_t n, const char* text = "") : KoListnode(n)
    {
        name = text;
        ++alive;
    }
    Rec(const Rec& other) : KoListnode(other) { ++alive; }
    ~Rec() override { --alive; }
    int Compare(const KoBaseListnode& other) const override
    {
        return static_cast<int>(number) - static_cast<int>(static_cast<const Rec&>(other).number);
    }
};
using RecList = TKoListHeader<Rec>;

// Numbers in list order; also checks that walking back gives the same chain and that the ends agree.
std::vector<std::uint32_t> Chain(const RecList& list)
{
    std::vector<std::uint32_t> forward;
    for (const Rec& r : list)
        forward.push_back(r.number);
    std::vector<std::uint32_t> backward;
    for (const Rec* r = list.Last(); r; r = RecList::Prev(r))
        backward.insert(backward.begin(), r->number);
    EXPECT_EQ(forward, backward);
    EXPECT_EQ(list.Count(), forward.size());
    if (list.First()) {
        EXPECT_EQ(list.First()->Prev(), nullptr);
    }
    if (list.Last()) {
        EXPECT_EQ(list.Last()->Next(), nullptr);
    }
    return forward;
}
using Numbers = std::vector<std::uint32_t>;

class ListTest : public ::testing::Test {
protected:
    void SetUp() override { Rec::alive = 0; }
    void TearDown() override { EXPECT_EQ(Rec::alive, 0); }
};

TEST_F(ListTest, LinkingRemovalAndOwnership)
{
    {
        RecList list;
        EXPECT_EQ(list.Append(nullptr), nullptr);
        EXPECT_EQ(list.InsertBefore(nullptr, nullptr), nullptr);
        Rec* two = list.InsertBefore(nullptr, new Rec(2));  // empty list: appended
        Rec* four = list.Append(new Rec(4));
        list.InsertBefore(two, new Rec(1));
        list.InsertBefore(four, new Rec(3));
        EXPECT_EQ(Chain(list), (Numbers{1, 2, 3, 4}));
        EXPECT_EQ(list.At(0)->number, 1u);
        EXPECT_EQ(list.At(3), four);
        EXPECT_EQ(list.At(4), nullptr);

        // Membership answers 0 or -1, never the position.
        EXPECT_EQ(list.CheckMember(list.At(2)), 0);
        Rec stranger(9);
        EXPECT_EQ(list.CheckMember(&stranger), -1);
        EXPECT_FALSE(list.Contains(&stranger));
        EXPECT_EQ(list.Remove(&stranger), nullptr);
        EXPECT_EQ(list.InsertBefore(&stranger, &stranger), nullptr);  // not a position of this list

        // Removing hands the element back, unlinked; the list no longer deletes it.
        std::unique_ptr<Rec> taken(list.Remove(two));
        EXPECT_EQ(taken.get(), two);
        EXPECT_EQ(taken->Next(), nullptr);
        EXPECT_EQ(taken->Prev(), nullptr);
        EXPECT_EQ(Chain(list), (Numbers{1, 3, 4}));
        std::unique_ptr<Rec> tail(list.Remove(four));
        std::unique_ptr<Rec> head(list.Remove(list.First()));
        EXPECT_EQ(Chain(list), (Numbers{3}));
        EXPECT_EQ(Rec::alive, 5);  // 3 taken, 1 listed, the stranger

        list.Append(new Rec(5));
        list.Delete(list.First());
        EXPECT_EQ(Chain(list), (Numbers{5}));
        list.Append(new Rec(6));
        list.DeleteAll();
        EXPECT_TRUE(list.IsEmpty());
        EXPECT_EQ(Rec::alive, 4);
        list.Append(new Rec(7));
        list.Append(new Rec(8));
    }  // the list deletes what it still holds
}

TEST_F(ListTest, SortedInsertKeepsEqualsInOrderAndKeySearchFindsTheFirstDifferentElement)
{
    RecList list;
    for (std::uint32_t n : {5u, 1u, 5u, 3u, 9u, 1u})
        list.InsertSorted(new Rec(n, n == 5 && list.FindByNumber(5) ? "second five" : ""));
    EXPECT_EQ(Chain(list), (Numbers{1, 1, 3, 5, 5, 9}));
    EXPECT_EQ(list.At(4)->name, "second five");

    // Key search returns the first element that does NOT compare equal to the key.
    const Rec key(1);
    EXPECT_EQ(list.FindByKey(key)->number, 3u);
    RecList same;
    same.Append(new Rec(4));
    EXPECT_EQ(same.FindByKey(Rec(4)), nullptr);
}

TEST_F(ListTest, PutReplacesTheElementWithTheSameNumberInPlace)
{
    RecList list;
    list.Append(new Rec(1));
    list.Append(new Rec(2, "old"));
    list.Append(new Rec(3));
    Rec* fresh = list.Put(new Rec(2, "new"));
    EXPECT_EQ(Chain(list), (Numbers{1, 2, 3}));
    EXPECT_EQ(list.At(1), fresh);
    EXPECT_EQ(Rec::alive, 3);  // the old one was deleted
    EXPECT_EQ(list.Put(fresh), fresh);  // putting an element that is already there changes nothing
    EXPECT_EQ(Chain(list), (Numbers{1, 2, 3}));

    list.Put(new Rec(0));
    EXPECT_EQ(Chain(list), (Numbers{1, 2, 3, 0}));  // new number: appended
    list.PutSorted(new Rec(2, "sorted"));
    EXPECT_EQ(list.At(1)->name, "sorted");
    list.PutCopySorted(Rec(2, "copy"));
    list.PutCopy(Rec(7));
    list.AppendCopy(Rec(1, "dup"));
    EXPECT_EQ(Chain(list), (Numbers{1, 2, 3, 0, 7, 1}));
    EXPECT_EQ(list.At(1)->name, "copy");
    EXPECT_EQ(list.FindByName("DUP"), nullptr);
    EXPECT_EQ(list.FindByName("DUP", true), list.At(5));
}

TEST_F(ListTest, FreeNumbersAndRenumbering)
{
    RecList list;
    EXPECT_EQ(list.FreeNumber(0), 1u);
    EXPECT_EQ(list.Renumber(10, nullptr, 5), 0u);
    list.Append(new Rec(2));
    list.Append(new Rec(7));
    EXPECT_EQ(list.FreeNumber(0), 8u);
    EXPECT_EQ(list.FreeNumber(2), 3u);
    EXPECT_EQ(list.FreeNumber(6), 6u);
    list.Append(new Rec(3));
    EXPECT_EQ(list.FreeNumber(2), 4u);

    EXPECT_EQ(list.Renumber(10, nullptr, 5), 3u);
    EXPECT_EQ(Chain(list), (Numbers{10, 15, 20}));
    EXPECT_EQ(list.Renumber(1, list.At(1)), 2u);
    EXPECT_EQ(Chain(list), (Numbers{10, 1, 2}));
}

TEST(KoPointList, SortsBySumOfPhotoAndNumberDifferencesAndCopiesItsFormat)
{
    KoPointList list;
    auto point = [](std::uint32_t number, std::int32_t photo) {
        auto* p = new KoPoint(number, 0, 0, 0, 0);
        p->photo = photo;
        return p;
    };
    // Photo first, number second would give 10 (photo 1) before 3 (photo 4); the sum of both
    // differences, (1 - 4) + (10 - 3) = 4, sorts 10 after 3.
    list.InsertSorted(point(10, 1));
    list.InsertSorted(point(3, 4));
    list.InsertSorted(point(1, 1));
    std::vector<std::uint32_t> order;
    for (const KoPoint& p : list)
        order.push_back(p.number);
    EXPECT_EQ(order, (std::vector<std::uint32_t>{1, 3, 10}));

    list.FieldMask().Add(eKoRWNumber);
    list.FieldMask().Add(eKoRWX);
    list.Units().Add(KoUnitPair(kKoUnitM));
    list.First()->mark2 = 4;
    KoPointList copy(list);
    EXPECT_EQ(copy.Count(), 3u);
    EXPECT_NE(copy.First(), list.First());
    EXPECT_EQ(copy.First()->mark2, 0);
    EXPECT_EQ(copy.FieldMask().GetSize(), 2u);
    EXPECT_EQ(copy.Units()[0].text, "m");
    EXPECT_THROW(copy.FieldMask()[2], KoIndexError);
    copy = copy;
    EXPECT_EQ(copy.Count(), 3u);
}

}  // namespace
