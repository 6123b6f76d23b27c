#include "foundation/component.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <vector>

namespace {

// A component's identity as a number: the tests compare it after the
// component is gone, and a freed pointer's value must not be used.
using Id = std::uintptr_t;
Id IdOf(const ts4::TWComponent* component) {
  return reinterpret_cast<Id>(component);
}

// A component that records every Notification it receives. Only identities
// are kept: the notifying component is being destroyed.
class Probe : public ts4::TWComponent {
 public:
  std::vector<Id> notified;
  std::function<void(ts4::TWComponent&)> onNotification;

  [[nodiscard]] int CountOf(Id component) const {
    int count = 0;
    for (const Id c : notified)
      if (c == component) ++count;
    return count;
  }

 protected:
  void Notification(ts4::TWComponent& component) override {
    notified.push_back(IdOf(&component));
    if (onNotification) onNotification(component);
  }
};

// Whichever side asked, and however often, the survivor hears once of the other's destruction.
TEST(ComponentNotification, TheSurvivorIsToldOnce) {
  for (const int asker : {0, 1, 2}) {  // the survivor, the other, both (the survivor twice)
    Probe survivor;
    auto dying = std::make_unique<Probe>();
    if (asker != 1) survivor.FreeNotification(*dying);
    if (asker != 0) dying->FreeNotification(survivor);
    if (asker == 2) survivor.FreeNotification(*dying);
    const Id address = IdOf(dying.get());
    dying.reset();
    EXPECT_EQ(survivor.notified, std::vector<Id>{address}) << asker;
  }
}

// After the survivor was told, its own destruction must not reach the component
// that is already gone; a link to itself is not kept (ASan reports either).
TEST(ComponentNotification, NoLinkOutlivesAComponent) {
  auto watcher = std::make_unique<Probe>();
  auto watched = std::make_unique<Probe>();
  watcher->FreeNotification(*watched);
  watched.reset();
  watcher.reset();
  auto self = std::make_unique<Probe>();
  self->FreeNotification(*self);
  self.reset();
  SUCCEED();
}

// Removal works from either side, more than once, for links that never were,
// and the link may be made again afterwards.
TEST(ComponentRemoval, RemovedLinksNotifyNothing) {
  for (const bool byTheOther : {false, true}) {
    Probe survivor;
    auto dying = std::make_unique<Probe>();
    survivor.RemoveFreeNotification(*dying);
    survivor.FreeNotification(*dying);
    if (byTheOther)
      dying->RemoveFreeNotification(survivor);
    else
      survivor.RemoveFreeNotification(*dying);
    survivor.RemoveFreeNotification(*dying);
    dying.reset();
    EXPECT_TRUE(survivor.notified.empty()) << byTheOther;
  }
  Probe watcher;
  auto watched = std::make_unique<Probe>();
  watcher.FreeNotification(*watched);
  watcher.RemoveFreeNotification(*watched);
  watched->FreeNotification(watcher);
  watched.reset();
  EXPECT_EQ(watcher.notified.size(), 1u);
}

TEST(ComponentSeveral, DestroyedHubNotifiesEachLinkOnce) {
  Probe x;
  Probe y;
  Probe z;
  auto hub = std::make_unique<Probe>();
  hub->FreeNotification(x);
  y.FreeNotification(*hub);
  hub->FreeNotification(z);
  const Id address = IdOf(hub.get());
  hub.reset();
  for (const Probe* p : {&x, &y, &z}) {
    ASSERT_EQ(p->notified.size(), 1u);
    EXPECT_EQ(p->notified[0], address);
  }
}

TEST(ComponentSeveral, LinksEndOneByOne) {
  auto hub = std::make_unique<Probe>();
  auto x = std::make_unique<Probe>();
  auto y = std::make_unique<Probe>();
  Probe z;
  for (Probe* p : {x.get(), y.get(), &z}) hub->FreeNotification(*p);
  x->FreeNotification(*y);  // the leaves know each other too

  const Id xAddress = IdOf(x.get());
  x.reset();
  EXPECT_EQ(hub->notified, std::vector<Id>{xAddress});
  EXPECT_EQ(y->notified, std::vector<Id>{xAddress});
  EXPECT_TRUE(z.notified.empty());

  const Id hubAddress = IdOf(hub.get());
  hub->RemoveFreeNotification(z);
  hub.reset();
  EXPECT_EQ(y->notified, (std::vector<Id>{xAddress, hubAddress}));
  EXPECT_TRUE(z.notified.empty());
  y.reset();
  EXPECT_TRUE(z.notified.empty());
}

TEST(ComponentSeveral, NotificationMayRemoveLinks) {
  // A component that forgets every link as soon as one partner goes.
  Probe a;
  Probe b;
  auto hub = std::make_unique<Probe>();
  hub->FreeNotification(a);
  hub->FreeNotification(b);
  a.FreeNotification(b);
  a.onNotification = [&](ts4::TWComponent& dying) {
    a.RemoveFreeNotification(dying);
    a.RemoveFreeNotification(b);
  };
  const Id hubAddress = IdOf(hub.get());
  hub.reset();
  EXPECT_EQ(a.CountOf(hubAddress), 1);
  EXPECT_EQ(b.CountOf(hubAddress), 1);
  EXPECT_EQ(b.CountOf(IdOf(&a)), 0);
}

// An owner that frees the component it owns when a partner goes, as an owner
// drops what depended on the partner. The owned component is linked to the
// dying one as well.
//
// A Notification may destroy another component linked to the dying one: that
// one must neither notify the half-destroyed hub (a pure virtual call) nor be
// used after it is freed. Run in a child process so that a crash fails only
// this test.
TEST(ComponentSeveralDeathTest, NotificationMayDestroyAnotherLinkedComponent) {
  EXPECT_EXIT(
      {
        auto owned = std::make_unique<Probe>();
        Probe owner;
        auto hub = std::make_unique<Probe>();
        hub->FreeNotification(owner);
        hub->FreeNotification(*owned);
        owner.onNotification = [&](ts4::TWComponent&) { owned.reset(); };
        hub.reset();
        std::exit(owner.notified.size() == 1 && owned == nullptr ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
