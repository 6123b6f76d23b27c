#include "foundation/component.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Names = std::vector<std::string>;

// Names of the probes being destroyed, innermost last. A probe's destructor
// pushes its name before the base class notifies; the name goes once it has.
// Probes are told apart by name: an address is not to be used once freed.
Names dying;

struct PopDyingName {
  ~PopDyingName() { dying.pop_back(); }
};

// A component that records the name of every component it is told of.
class Probe : PopDyingName, public ts4::TWComponent {
 public:
  explicit Probe(std::string name) : name_(std::move(name)) {}
  ~Probe() override { dying.push_back(name_); }
  Probe(const Probe&) = delete;
  Probe& operator=(const Probe&) = delete;

  Names notified;
  std::function<void(ts4::TWComponent&)> onNotification;

 protected:
  void Notification(ts4::TWComponent& component) override {
    notified.push_back(dying.empty() ? "?" : dying.back());
    if (onNotification) onNotification(component);
  }

 private:
  std::string name_;
};

// Whichever side asked, and however often, the survivor hears once of the
// other's destruction; a removed link, from either side, tells nothing.
TEST(Component, TheSurvivorIsToldOnceUnlessTheLinkWasRemoved) {
  for (const int asker : {0, 1, 2}) {       // the survivor, the other, both (the survivor twice)
    for (const int remover : {-1, 0, 1}) {  // nobody, the survivor, the other
      SCOPED_TRACE(std::to_string(asker) + " " + std::to_string(remover));
      Probe survivor("survivor");
      auto other = std::make_unique<Probe>("other");
      survivor.RemoveFreeNotification(*other);  // a link that never was
      if (asker != 1) survivor.FreeNotification(*other);
      if (asker != 0) other->FreeNotification(survivor);
      if (asker == 2) survivor.FreeNotification(*other);
      if (remover == 0) survivor.RemoveFreeNotification(*other);
      if (remover == 1) other->RemoveFreeNotification(survivor);
      other.reset();
      EXPECT_EQ(survivor.notified, remover < 0 ? Names{"other"} : Names{});
    }
  }
  // Made again after removal, the link tells again.
  Probe watcher("watcher");
  auto watched = std::make_unique<Probe>("watched");
  watcher.FreeNotification(*watched);
  watcher.RemoveFreeNotification(*watched);
  watched->FreeNotification(watcher);
  watched.reset();
  EXPECT_EQ(watcher.notified, Names{"watched"});
}

// After the survivor was told, its own destruction must not reach the component
// that is already gone; a link to itself is not kept (ASan reports either).
TEST(Component, NoLinkOutlivesAComponent) {
  auto watcher = std::make_unique<Probe>("watcher");
  auto watched = std::make_unique<Probe>("watched");
  watcher->FreeNotification(*watched);
  watched.reset();
  watcher.reset();
  auto self = std::make_unique<Probe>("self");
  self->FreeNotification(*self);
  self.reset();
  SUCCEED();
}

TEST(Component, LinksEndOneByOne) {
  auto hub = std::make_unique<Probe>("hub");
  auto x = std::make_unique<Probe>("x");
  auto y = std::make_unique<Probe>("y");
  Probe z("z");
  for (Probe* p : {x.get(), y.get(), &z}) hub->FreeNotification(*p);
  x->FreeNotification(*y);  // the leaves know each other too

  x.reset();
  EXPECT_EQ(hub->notified, Names{"x"});
  EXPECT_EQ(y->notified, Names{"x"});
  EXPECT_TRUE(z.notified.empty());

  hub->RemoveFreeNotification(z);
  hub.reset();
  EXPECT_EQ(y->notified, (Names{"x", "hub"}));
  EXPECT_TRUE(z.notified.empty());
  y.reset();
  EXPECT_TRUE(z.notified.empty());
}

TEST(Component, NotificationMayRemoveLinks) {
  // A component that forgets every link as soon as one partner goes.
  Probe a("a");
  Probe b("b");
  auto hub = std::make_unique<Probe>("hub");
  hub->FreeNotification(a);
  hub->FreeNotification(b);
  a.FreeNotification(b);
  a.onNotification = [&](ts4::TWComponent& gone) {
    a.RemoveFreeNotification(gone);
    a.RemoveFreeNotification(b);
  };
  hub.reset();
  EXPECT_EQ(a.notified, Names{"hub"});
  EXPECT_EQ(b.notified, Names{"hub"});
}

// An owner that frees the component it owns when a partner goes, as an owner
// drops what depended on the partner. The owned component is linked to the
// dying one as well: it must neither notify the half-destroyed hub (a pure
// virtual call) nor be used after it is freed. Run in a child process so that
// a crash fails only this test.
TEST(ComponentDeathTest, NotificationMayDestroyAnotherLinkedComponent) {
  EXPECT_EXIT(
      {
        auto owned = std::make_unique<Probe>("owned");
        Probe owner("owner");
        auto hub = std::make_unique<Probe>("hub");
        hub->FreeNotification(owner);
        hub->FreeNotification(*owned);
        owner.onNotification = [&](ts4::TWComponent&) { owned.reset(); };
        hub.reset();
        std::exit(owner.notified == Names{"hub"} && owned == nullptr ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
