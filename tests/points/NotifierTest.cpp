#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <vector>

#include "points/KoPointList.h"

namespace {

struct Seen {
    std::int32_t code;
    const KoPoint* element;
    std::intptr_t value;
    std::size_t countThen;
    bool elementListedThen;
};

class Recorder : public KoObserver {
public:
    explicit Recorder(KoPointList* list) : KoObserver(list ? &list->Notifier() : nullptr), m_list(list) {}
    void Update(const KoEvent& e) override
    {
        const KoPoint* element = e.Element<KoPoint>();
        events.push_back({e.code, element, e.value, m_list ? m_list->Count() : 0,
                          m_list && element && m_list->Contains(element)});
        if (onUpdate)
            onUpdate(e);
    }
    std::vector<std::int32_t> Codes() const
    {
        std::vector<std::int32_t> codes;
        for (const Seen& s : events)
            codes.push_back(s.code);
        return codes;
    }

    std::vector<Seen> events;
    std::function<void(const KoEvent&)> onUpdate;
    KoPointList* m_list;
};
using Codes = std::vector<std::int32_t>;

TEST(Notification, EachOperationAnnouncesItselfInOrder)
{
    KoPointList list;
    Recorder rec(&list);

    KoPoint* a = list.Append(new KoPoint(1, 0, 0, 0, 0));
    KoPoint* c = list.Append(new KoPoint(3, 0, 0, 0, 0));
    KoPoint* b = list.InsertBefore(c, new KoPoint(2, 0, 0, 0, 0));
    EXPECT_EQ(rec.Codes(), (Codes{2, 2})) << "linking into the middle is not announced";
    KoPoint* head = list.InsertBefore(a, new KoPoint(0, 0, 0, 0, 0));
    EXPECT_EQ(rec.Codes(), (Codes{2, 2, 2})) << "a new head is";
    EXPECT_EQ(rec.events[2].element, head);
    EXPECT_TRUE(rec.events[2].elementListedThen);
    delete list.Remove(head);
    rec.events.pop_back();

    std::unique_ptr<KoPoint> removed(list.Remove(b));
    ASSERT_EQ(rec.events.size(), 4u);
    EXPECT_EQ(rec.events[3].code, eKoEventRemoved);
    EXPECT_EQ(rec.events[3].element, b);
    EXPECT_TRUE(rec.events[3].elementListedThen);  // announced while still in the list
    EXPECT_EQ(rec.events[3].countThen, 3u);

    rec.events.clear();
    list.Put(new KoPoint(1, 5, 5, 5, 0));  // replaces a: added, then removed
    EXPECT_EQ(rec.Codes(), (Codes{2, 3}));
    EXPECT_EQ(rec.events[1].element, a);

    rec.events.clear();
    Recorder causer(&list);  // the observer whose edit caused a change notice does not get it back
    list.NotifyChanged(42, &causer);
    list.NotifyUpdate();
    EXPECT_EQ(rec.Codes(), (Codes{1, 1}));
    EXPECT_EQ(causer.Codes(), (Codes{1}));
    EXPECT_EQ(rec.events[0].value, 42);
    EXPECT_EQ(rec.events[0].element, nullptr);
    causer.Detach();

    rec.events.clear();
    list.DeleteAll();
    EXPECT_EQ(rec.Codes(), (Codes{1}));
    EXPECT_EQ(rec.events[0].countThen, 0u);
}

TEST(Notification, SuspensionNestsAndExtraResumesDoNothing)
{
    KoPointList list;
    Recorder rec(&list);
    list.EnableNotification(true);  // nothing pending: no effect
    list.EnableNotification(false);
    list.EnableNotification(false);
    list.Append(new KoPoint(1, 0, 0, 0, 0));
    list.EnableNotification(true);
    list.Append(new KoPoint(2, 0, 0, 0, 0));
    list.NotifyChanged();
    EXPECT_TRUE(rec.events.empty());
    list.EnableNotification(true);
    list.EnableNotification(true);
    list.Append(new KoPoint(3, 0, 0, 0, 0));
    EXPECT_EQ(rec.Codes(), (Codes{2}));
}

TEST(Notification, AssignAndMoveAnnounceOneChangeEach)
{
    KoPointList source;
    KoPointList target;
    for (std::uint32_t n = 1; n <= 3; ++n)
        source.Append(new KoPoint(n, 0, 0, 0, 0));
    target.Append(new KoPoint(9, 0, 0, 0, 0));
    Recorder onSource(&source);
    Recorder onTarget(&target);

    target = source;
    EXPECT_EQ(onTarget.Codes(), (Codes{1}));  // nothing per element
    EXPECT_EQ(onTarget.events[0].countThen, 3u);
    EXPECT_TRUE(onSource.events.empty());
    EXPECT_NE(target.First(), source.First());
    target = target;
    EXPECT_EQ(onTarget.events.size(), 1u);

    onTarget.events.clear();
    source.MoveAllTo(target);
    EXPECT_TRUE(source.IsEmpty());
    EXPECT_EQ(target.Count(), 6u);
    EXPECT_EQ(target.Last()->number, 3u);
    EXPECT_EQ(target.Prev(target.Prev(target.Prev(target.Last())))->number, 3u);
    EXPECT_EQ(onTarget.Codes(), (Codes{1}));
    EXPECT_EQ(onSource.Codes(), (Codes{1}));
    EXPECT_EQ(onSource.events[0].value, 0);

    KoPointList empty;
    empty.Append(new KoPoint(1, 0, 0, 0, 0));
    target.MoveAllTo(empty);
    EXPECT_EQ(empty.Count(), 7u);
    EXPECT_EQ(empty.First()->Prev(), nullptr);
}

TEST(Notification, DestroyedListSendsEventFourWhenEmptyEvenWhileSuspended)
{
    auto list = std::make_unique<KoPointList>();
    list->Append(new KoPoint(1, 0, 0, 0, 0));
    list->Append(new KoPoint(2, 0, 0, 0, 0));
    Recorder rec(list.get());
    list->EnableNotification(false);
    list.reset();
    ASSERT_EQ(rec.Codes(), (Codes{4}));
    EXPECT_EQ(rec.events[0].countThen, 0u);
    EXPECT_EQ(rec.Notifier(), nullptr);  // detached by the dying list
    EXPECT_FALSE(rec.Detach());
}

TEST(KoStandardNotifier, AttachDetachAndGrowth)
{
    KoStandardNotifier notifier;
    Recorder a(nullptr);
    EXPECT_FALSE(notifier.Attach(nullptr));
    EXPECT_TRUE(notifier.Attach(&a));
    EXPECT_FALSE(notifier.Attach(&a));  // already attached: refused, nothing changes
    EXPECT_EQ(notifier.Count(), 1u);

    KoStandardNotifier other;
    EXPECT_FALSE(other.Attach(&a));
    EXPECT_TRUE(a.AttachTo(&other));  // re-targeting detaches first
    EXPECT_EQ(notifier.Count(), 0u);
    EXPECT_EQ(a.Notifier(), &other);
    EXPECT_FALSE(notifier.Detach(&a));

    std::vector<std::unique_ptr<Recorder>> many;
    for (int i = 0; i < 5; ++i) {
        many.push_back(std::make_unique<Recorder>(nullptr));
        notifier.Attach(many.back().get());
    }
    many[1].reset();  // destroyed while attached: removes itself, the rest close up
    EXPECT_EQ(notifier.Count(), 4u);
    EXPECT_EQ(notifier.At(1), many[2].get());
    EXPECT_EQ(notifier.At(4), nullptr);
    EXPECT_EQ(notifier.Notify(KoEvent{}), 4u);
    for (std::size_t i : {0u, 2u, 3u, 4u})
        EXPECT_EQ(many[i]->events.size(), 1u);
}

TEST(KoStandardNotifier, ObserversLeavingDuringARoundAreNotCalledAfterwards)
{
    KoPointList list;
    auto first = std::make_unique<Recorder>(&list);
    auto second = std::make_unique<Recorder>(&list);
    auto third = std::make_unique<Recorder>(&list);
    // The first observer destroys the second and detaches itself while the change is delivered.
    first->onUpdate = [&](const KoEvent&) {
        second.reset();
        first->Detach();
    };
    list.NotifyChanged();
    EXPECT_EQ(first->events.size(), 1u);
    EXPECT_EQ(third->events.size(), 1u);
    EXPECT_EQ(list.Notifier().Count(), 1u);
    list.NotifyChanged();
    EXPECT_EQ(first->events.size(), 1u);
    EXPECT_EQ(third->events.size(), 2u);
}

}  // namespace
