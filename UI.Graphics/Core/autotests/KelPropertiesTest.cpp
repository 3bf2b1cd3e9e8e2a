#include "KelProperties.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <sstream>
#include <utility>

namespace {

// A node that counts its destructions.
class Node : public KelProperties {
public:
    Node(KelModifiedGroup& group, const QString& name, int* destroyed = nullptr)
        : KelProperties(group)
        , m_destroyed(destroyed)
    {
        rename(name);
    }
    ~Node() override
    {
        if (m_destroyed)
            ++*m_destroyed;
    }

private:
    int* m_destroyed;
};

// An element class: it has a member child, makes its own children (refusing
// the type "refused") and records what it hears from its children. The
// records come before the member child, which reports its own destruction.
class Composite : public KelProperties {
public:
    explicit Composite(KelModifiedGroup& group)
        : KelProperties(group)
        , member(group, "member")
    {
        insert(&member, true);
    }

    bool remove(KelProperties* child) override
    {
        if (child)
            removed << child->name();
        return KelProperties::remove(child);
    }
    void onDependentRename(const QString& oldName, const QString& newName) override
    {
        renames << oldName + "->" + newName;
    }

    QStringList removed;
    QStringList renames;
    Node member;

protected:
    KelProperties* makeChild(const QString& name, const QString& type) override
    {
        return type == "refused" ? nullptr : new Node(group(), name);
    }
};

class PropertiesTree : public testing::Test {
protected:
    KelModifiedGroup group;
    int destroyed = 0;

    Node* owned(KelProperties& parent, const QString& name)
    {
        auto* node = new Node(group, name, &destroyed);
        EXPECT_TRUE(parent.insert(node, false));
        return node;
    }
};

} // namespace

TEST_F(PropertiesTree, LookupGivesTheFirstOfDuplicatesAndChildMakesMissingOnes)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    Composite composite(group);
    Node* first = owned(composite, "axis");
    Node* second = owned(composite, "axis");
    EXPECT_EQ(composite[2u], second);
    EXPECT_EQ(composite[3u], nullptr);
    EXPECT_EQ(composite["axis"], first);
    EXPECT_EQ(&composite.child("axis", "ignored"), first);

    const KelProperties& made = std::as_const(composite).child("x", "axis");
    EXPECT_NE(dynamic_cast<const Node*>(&made), nullptr);
    EXPECT_EQ(composite.back(), &made);
    EXPECT_FALSE(composite.isMember(&made));

    KelProperties& plain = composite.child("y", "refused");
    EXPECT_EQ(capture.texts(orvdebug::Stream::Ensure).size(), 1u);
    EXPECT_EQ(dynamic_cast<Node*>(&plain), nullptr);
    EXPECT_EQ(plain.parent(), &composite);
}

TEST_F(PropertiesTree, MembersAreLetGoOwnedChildrenAreFreedMovedOnesFollow)
{
    KelProperties second(group);
    Node* moved = nullptr;
    {
        Composite composite(group);
        Node* child = owned(composite, "owned");
        moved = owned(composite, "moved");
        {
            Node outsider(group, "outsider");
            composite.insert(&outsider, true);
        } // leaves through the parent's virtual remove
        EXPECT_TRUE(second.insert(moved, false)); // also through remove, without being freed
        EXPECT_EQ(composite.removed, (QStringList{"outsider", "moved"}));
        EXPECT_TRUE(composite.remove(child));
        EXPECT_EQ(destroyed, 1);
        EXPECT_TRUE(composite.member.rename("renamed"));
        EXPECT_EQ(composite.renames, QStringList{"member->renamed"});
        EXPECT_TRUE(composite.remove(&composite.member));
        EXPECT_FALSE(composite.remove(&composite.member));
        owned(composite, "freed with its parent");
    }
    EXPECT_EQ(destroyed, 2);
    EXPECT_EQ(moved->parent(), &second);
    EXPECT_TRUE(second.insert(moved, false)); // into the same parent again: still one child
    EXPECT_EQ(second.size(), 1u);
}

TEST_F(PropertiesTree, CyclesNullAndStrangersAreRefused)
{
    KelProperties root(group);
    Node* a = owned(root, "a");
    Node* b = owned(*a, "b");
    KelProperties stranger(group);
    EXPECT_FALSE(b->insert(nullptr, false));
    EXPECT_FALSE(b->insert(b, false));
    EXPECT_FALSE(b->insert(a, false));
    EXPECT_FALSE(b->insert(&root, true));
    EXPECT_FALSE(root.erase(&stranger));
    EXPECT_FALSE(root.erase(&root));
    EXPECT_FALSE(root.remove(b)); // not a direct child
    EXPECT_FALSE(root.remove(nullptr));
    EXPECT_TRUE(a->parent() == &root && b->parent() == a);
    EXPECT_EQ(destroyed, 0);
}

// Every order of removing a child, erasing a grandchild and destroying a member
// and the root frees every owned node exactly once and leaves nothing dangling
// (the sanitizer build checks the memory side).
TEST_F(PropertiesTree, RemoveEraseAndDestroyInEveryOrder)
{
    std::array<int, 4> order{0, 1, 2, 3};
    do {
        destroyed = 0;
        auto root = std::make_unique<Node>(group, "root", &destroyed);
        auto member = std::make_unique<Node>(group, "member", &destroyed);
        root->insert(member.get(), true);
        const kel::view_ptr<KelProperties> child(owned(*root, "child"));
        const kel::view_ptr<KelProperties> grandchild(owned(*child, "grandchild"));
        const std::array<std::function<void()>, 4> steps{
            [&] { if (root && child) { EXPECT_TRUE(root->remove(child.get())); } },
            [&] { if (root && grandchild) { EXPECT_TRUE(root->erase(grandchild.get())); } },
            [&] { member.reset(); },
            [&] { root.reset(); },
        };
        for (int step : order) {
            SCOPED_TRACE(step);
            steps[static_cast<unsigned>(step)]();
            EXPECT_TRUE(!member || member->parent() == root.get());
            EXPECT_TRUE(!root || !member || root->indexOf(member.get()) == 0);
        }
        EXPECT_FALSE(child || grandchild);
        EXPECT_EQ(destroyed, 4);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(PropertiesTree, CopyTakesTypeAndStoreButNoTreeAssignmentKeepsTheName)
{
    KelProperties parent(group);
    Node* original = owned(parent, "original");
    original->setType("axis");
    original->setValue("p", "1");
    owned(*original, "grandchild");
    const KelProperties copy(*original);
    EXPECT_EQ(copy.name(), "original");
    EXPECT_EQ(copy.string().getString("p"), "1");
    EXPECT_TRUE(copy.parent() == nullptr && copy.size() == 0u);

    KelProperties target(group);
    target.rename("target");
    owned(target, "kept");
    group.setModified(false);
    target = *original;
    EXPECT_EQ(target.name(), "target");
    EXPECT_EQ(target.type(), "axis");
    EXPECT_EQ(target.size(), 1u);
    EXPECT_TRUE(group.modified());
}

TEST_F(PropertiesTree, TextWritesByNameMarkTheGroupOnlyWhenAccepted)
{
    KelProperties node(group);
    node.string().setValue("width", 2.0);
    group.setModified(false);
    EXPECT_FALSE(node.setValue("width", "abc").isEmpty());
    EXPECT_FALSE(group.modified());
    EXPECT_EQ(node.setValue("width", "3"), QString());
    EXPECT_TRUE(group.modified());

    std::ostringstream os; // QString goes to standard streams as UTF-8
    os << QString::fromUtf8("a\xc3\xbc\xe2\x82\xac");
    EXPECT_EQ(os.str(), "a\xc3\xbc\xe2\x82\xac");
}
