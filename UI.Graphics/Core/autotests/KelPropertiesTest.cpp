#include "KelProperties.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <sstream>

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

// A node with a member child, as element classes declare them, recording what
// it hears from its children. The records come before the member child: the
// child reports its own destruction to them.
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
};

// Makes its own children; refuses the type "refused".
class Factory : public KelProperties {
public:
    using KelProperties::KelProperties;

protected:
    KelProperties* makeChild(const QString& name, const QString& type) override
    {
        if (type == "refused")
            return nullptr;
        auto* node = new Node(group(), name);
        node->setType(type);
        return node;
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

TEST_F(PropertiesTree, LookupByIndexAndByNameGivesTheFirstOfDuplicates)
{
    KelProperties root(group);
    EXPECT_EQ(root.front(), nullptr);
    EXPECT_EQ(root.back(), nullptr);
    EXPECT_EQ(root["axis"], nullptr);
    Node* first = owned(root, "axis");
    Node* second = owned(root, "axis");
    Node* last = owned(root, "other");
    EXPECT_EQ(root.size(), 3u);
    EXPECT_EQ(root[1u], second);
    EXPECT_EQ(root[3u], nullptr);
    EXPECT_EQ(root["axis"], first);
    EXPECT_EQ(root.front(), first);
    EXPECT_EQ(root.back(), last);
    EXPECT_EQ(root.indexOf(last), 2);
    EXPECT_EQ(&root.child("axis", "ignored"), first);
    EXPECT_EQ(root.size(), 3u);
}

TEST_F(PropertiesTree, ChildIsMadeOnceThroughTheOverridingFactory)
{
    Factory factory(group);
    KelProperties& made = factory.child("x", "axis");
    EXPECT_NE(dynamic_cast<Node*>(&made), nullptr);
    EXPECT_EQ(made.name(), "x");
    EXPECT_EQ(made.type(), "axis");
    EXPECT_EQ(made.parent(), &factory);
    EXPECT_FALSE(factory.isMember(&made));
    EXPECT_EQ(&factory.child("x", "axis"), &made);
    const Factory& constFactory = factory;
    const KelProperties& madeByConstLookup = constFactory.child("y", "axis");
    EXPECT_EQ(&madeByConstLookup, factory["y"]);
    EXPECT_EQ(factory.size(), 2u);
}

TEST_F(PropertiesTree, RefusedChildIsReportedAndMadePlain)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    Factory factory(group);
    KelProperties& made = factory.child("x", "refused");
    EXPECT_EQ(capture.texts(orvdebug::Stream::Ensure).size(), 1u);
    EXPECT_EQ(dynamic_cast<Node*>(&made), nullptr);
    EXPECT_EQ(made.type(), "refused");
    EXPECT_EQ(factory["x"], &made);
}

TEST_F(PropertiesTree, MemberChildrenAreNeverFreedOwnedOnesAre)
{
    {
        Composite composite(group);
        owned(composite, "owned");
        EXPECT_TRUE(composite.isMember(&composite.member));
        EXPECT_EQ(composite.size(), 2u);
    }
    EXPECT_EQ(destroyed, 1);
}

TEST_F(PropertiesTree, DestroyedMemberLeavesItsParentThroughRemove)
{
    Composite composite(group);
    {
        Node outsider(group, "outsider");
        composite.insert(&outsider, true);
        EXPECT_EQ(composite.size(), 2u);
    }
    EXPECT_EQ(composite.size(), 1u);
    EXPECT_EQ(composite.removed, QStringList{"outsider"});
}

TEST_F(PropertiesTree, RemoveFreesOwnedAndLetsMembersGo)
{
    Composite composite(group);
    Node* child = owned(composite, "owned");
    EXPECT_TRUE(composite.remove(child));
    EXPECT_EQ(destroyed, 1);
    EXPECT_TRUE(composite.remove(&composite.member));
    EXPECT_EQ(composite.member.parent(), nullptr);
    EXPECT_EQ(composite.size(), 0u);
    EXPECT_FALSE(composite.remove(&composite.member));
    EXPECT_FALSE(composite.remove(nullptr));
}

TEST_F(PropertiesTree, EraseFindsTheNodeAnywhereBelow)
{
    KelProperties root(group);
    Node* a = owned(root, "a");
    Node* b = owned(*a, "b");
    owned(*b, "c");
    KelProperties unrelated(group);
    EXPECT_FALSE(root.erase(&unrelated));
    EXPECT_FALSE(root.erase(&root));
    EXPECT_FALSE(a->erase(a));
    EXPECT_TRUE(root.erase(b));
    EXPECT_EQ(destroyed, 2);
    EXPECT_EQ(a->size(), 0u);
}

TEST_F(PropertiesTree, InsertingMovesWithoutFreeing)
{
    auto first = std::make_unique<Composite>(group);
    KelProperties second(group);
    Node* child = owned(*first, "moved");
    EXPECT_TRUE(second.insert(child, false));
    EXPECT_EQ(child->parent(), &second);
    EXPECT_EQ(first->size(), 1u);
    EXPECT_EQ(first->removed, QStringList{"moved"});
    first.reset();
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(second.back(), child);
    EXPECT_TRUE(second.insert(child, false));
    EXPECT_EQ(second.size(), 1u);
}

TEST_F(PropertiesTree, CyclesAndNullAreRefused)
{
    KelProperties root(group);
    Node* a = owned(root, "a");
    Node* b = owned(*a, "b");
    EXPECT_FALSE(b->insert(nullptr, false));
    EXPECT_FALSE(b->insert(b, false));
    EXPECT_FALSE(b->insert(a, false));
    EXPECT_FALSE(b->insert(&root, true));
    EXPECT_EQ(a->parent(), &root);
    EXPECT_EQ(b->parent(), a);
    EXPECT_EQ(b->size(), 0u);
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
            if (root && member) {
                EXPECT_EQ(root->indexOf(member.get()), 0);
            }
            if (member) {
                EXPECT_EQ(member->parent(), root.get());
            }
        }
        EXPECT_FALSE(child);
        EXPECT_FALSE(grandchild);
        EXPECT_EQ(destroyed, 4);
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST_F(PropertiesTree, RenameTellsTheParent)
{
    Composite composite(group);
    EXPECT_TRUE(composite.member.rename("renamed"));
    EXPECT_EQ(composite.renames, QStringList{"member->renamed"});
    EXPECT_EQ(composite["renamed"], &composite.member);
    EXPECT_EQ(composite["member"], nullptr);
}

TEST_F(PropertiesTree, CopyTakesNameTypeAndStoreButNoTree)
{
    KelProperties parent(group);
    Node* original = owned(parent, "original");
    original->setType("axis");
    original->setValue("p", "1");
    owned(*original, "grandchild");

    const KelProperties copy(*original);
    EXPECT_EQ(copy.name(), "original");
    EXPECT_EQ(copy.type(), "axis");
    EXPECT_EQ(copy.string().getString("p"), "1");
    EXPECT_EQ(copy.parent(), nullptr);
    EXPECT_EQ(copy.size(), 0u);

    KelProperties target(group);
    target.rename("target");
    owned(target, "kept");
    group.setModified(false);
    target = *original;
    EXPECT_EQ(target.name(), "target");
    EXPECT_EQ(target.type(), "axis");
    EXPECT_EQ(target.string().getString("p"), "1");
    EXPECT_EQ(target.size(), 1u);
    EXPECT_TRUE(group.modified());
}

TEST_F(PropertiesTree, ValuesByNameGoThroughTheStore)
{
    KelProperties node(group);
    node.string().setValue("width", 2.0);
    group.setModified(false);
    EXPECT_EQ(node.setValue("width", "abc"), "cannot read \"abc\" as double for \"width\"");
    EXPECT_FALSE(group.modified());
    EXPECT_EQ(node.setValue("width", "3"), QString());
    EXPECT_TRUE(group.modified());
    QString value;
    EXPECT_EQ(node.getValue("width", value, "none"), QString());
    EXPECT_EQ(value, "3");
    EXPECT_FALSE(node.getValue("missing", value, "none").isEmpty());
    EXPECT_EQ(value, "none");
}

TEST(PropertiesStreaming, QStringIsWrittenAsUtf8)
{
    std::ostringstream os;
    os << QString::fromUtf8("a\xc3\xbc\xe2\x82\xac");
    EXPECT_EQ(os.str(), "a\xc3\xbc\xe2\x82\xac");
}
