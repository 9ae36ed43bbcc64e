// The undo engine driven by an in-memory box and a fake timer. A "pause" is the timer firing.
#include "textdocs/clsUndo.h"

#include <gtest/gtest.h>

using namespace zarvion::textdocs;
using namespace std::string_literals;

namespace {

using Stacks = std::pair<std::size_t, std::size_t>;

class FakeTimer : public UndoTimer {
public:
    void setInterval(int ms) override { interval = ms; }
    void setEnabled(bool e) override { enabled = e; }
    bool isEnabled() const override { return enabled; }
    int interval = 0;
    bool enabled = false;
};

//! A box, a timer and the engine, wired as a window wires them.
class UndoRig {
public:
    UndoRig()
    {
        box.onChange = [this] { undo.onChange(); };
        box.onSelectionChange = [this] { undo.onSelectionChange(); };
        undo.StateChanged = [this] { ++stateChanges; };
        EXPECT_TRUE(undo.Create(box, timer, 250));
    }

    //! The user pauses: the timer fires if it is running.
    void pause()
    {
        if (timer.enabled) {
            undo.onTimer();
        }
    }
    void edit(const std::string& typed)
    {
        box.type(typed);
        pause();
    }
    //! Sizes of the undo and the redo stack.
    Stacks stacks() const { return {undo.undoStack().size(), undo.redoStack().size()}; }

    MemoryTextBox box;
    FakeTimer timer;
    clsUndo undo;
    int stateChanges = 0;
};

} // namespace

TEST(clsUndo, BaselineUndoRedoAndReset)
{
    UndoRig rig;
    // The baseline comes one interval later.
    EXPECT_EQ(std::tuple(rig.timer.interval, rig.timer.enabled, rig.stateChanges),
              std::tuple(250, true, 1));
    rig.pause();
    EXPECT_EQ(std::tuple(rig.timer.enabled, rig.stacks(), rig.undo.canUndo(), rig.stateChanges),
              std::tuple(false, Stacks(1, 0), false, 2));

    rig.box.type("a"); // typing without a pause is one step
    rig.box.type("bc");
    rig.pause();
    EXPECT_EQ(std::pair(rig.stacks(), rig.undo.canUndo()), std::pair(Stacks(2, 0), true));
    rig.undo.Undo(); // the restore is no new state: the timer stays off
    EXPECT_EQ(std::tuple(rig.box.text(), rig.stacks(), rig.undo.canRedo(), rig.timer.enabled,
                         rig.undo.enabled()),
              std::tuple(""s, Stacks(1, 1), true, false, true));
    rig.undo.Redo();
    EXPECT_EQ(std::tuple(rig.box.text(), rig.stacks(), rig.timer.enabled),
              std::tuple("abc"s, Stacks(2, 0), false));
    EXPECT_EQ(rig.stateChanges, 5); // reset, two snapshots, undo, redo
    rig.undo.Redo(); // nothing more to redo: no change, no event
    EXPECT_EQ(rig.stateChanges, 5);

    rig.undo.Undo();
    rig.undo.Reset();
    EXPECT_EQ(std::pair(rig.stacks(), rig.timer.enabled), std::pair(Stacks(0, 0), true));
    rig.pause();
    ASSERT_EQ(rig.stacks(), Stacks(1, 0));
    EXPECT_EQ(rig.undo.undoStack()[0].Text, "");
}

TEST(clsUndo, KeepsAtMostTwentyOneStates)
{
    UndoRig rig;
    rig.pause(); // state 0: ""
    for (int i = 1; i <= 25; ++i) {
        rig.edit("x"); // state i: i times "x"
    }
    // 26 states were taken; the first five are gone.
    EXPECT_EQ(rig.stacks(), Stacks(21, 0));
    for (int i = 0; i < 30; ++i) {
        rig.undo.Undo();
    }
    EXPECT_EQ(std::pair(rig.box.text(), rig.stacks()), std::pair("xxxxx"s, Stacks(1, 20)));
}

TEST(clsUndo, RedoChainEndsOnlyWithTheNextSnapshot)
{
    UndoRig rig;
    rig.pause();
    rig.edit("one");
    rig.edit(" two");
    rig.undo.Undo();
    EXPECT_EQ(rig.box.text(), "one");
    rig.box.setSelStart(3);
    rig.box.type("!");
    EXPECT_TRUE(rig.undo.canRedo()); // still during the pause
    rig.pause();
    EXPECT_EQ(std::pair(rig.undo.canRedo(), rig.undo.undoStack().back().Text),
              std::pair(false, "one!"s));
}

TEST(clsUndo, SelectionMemory)
{
    UndoRig rig;
    auto sel = [](clsUndo::Selection s) { return std::make_pair(s.start, s.length); };
    auto element = [&rig](int i) {
        const auto& e = rig.undo.undoStack()[static_cast<std::size_t>(i)];
        return std::make_pair(e.SelStart, e.SelLength);
    };
    rig.box.setText("hello world");
    rig.pause(); // baseline "hello world"
    rig.box.setSelStart(6);
    rig.box.setSelLength(5); // "world" selected, recorded: previous (6,0), current (6,5)
    EXPECT_EQ(sel(rig.undo.currentSelection()), std::make_pair(6, 5));
    EXPECT_EQ(sel(rig.undo.previousSelection()).second, 0);

    rig.box.type("X"); // "hello X"; the caret move while the timer runs is not recorded
    EXPECT_EQ(sel(rig.undo.currentSelection()).second, 5);
    rig.pause();
    // The baseline now carries the selection that stood before the last selection change;
    // a new element starts at 0, 0.
    EXPECT_EQ(element(0), std::make_pair(6, 0));
    EXPECT_EQ(element(1), std::make_pair(0, 0));
    // After a snapshot the previous selection's length takes the start.
    EXPECT_EQ(sel(rig.undo.previousSelection()), std::make_pair(7, 7));
    EXPECT_EQ(sel(rig.undo.currentSelection()), std::make_pair(7, 0));

    rig.edit("Y"); // "hello XY"
    EXPECT_EQ(element(1), std::make_pair(7, 7));
    rig.undo.Undo(); // 7 characters asked, none left behind the caret
    EXPECT_EQ(std::tuple(rig.box.text(), rig.box.selStart(), rig.box.selLength()),
              std::tuple("hello X"s, 7, 0));
    rig.undo.Undo();
    EXPECT_EQ(std::pair(rig.box.text(), rig.box.selStart()), std::pair("hello world"s, 6));
}

TEST(clsUndo, UndoKeepsTheViewRedoDoesNot)
{
    UndoRig rig;
    rig.box.setText("line\nline\nline\nline\nline\nline\nline\nline\nline\nline\n");
    rig.pause();
    rig.box.scrollLines(3);
    rig.box.setSelStart(0);
    rig.edit("new ");
    rig.box.scrollLines(3 - rig.box.firstVisibleLine());
    ASSERT_EQ(rig.box.firstVisibleLine(), 3);
    rig.undo.Undo();
    // The restored text starts at the top and is scrolled by first visible line + 1.
    EXPECT_EQ(rig.box.firstVisibleLine(), 4);
    rig.undo.Redo();
    EXPECT_EQ(rig.box.firstVisibleLine(), 0);
}

TEST(clsUndo, CtrlZAndCtrlYAreConsumed)
{
    UndoRig rig;
    rig.pause();
    for (int code : {90, 89}) { // nothing to undo or redo: consumed all the same
        int key = code;
        EXPECT_TRUE(rig.undo.onKeyDown(key, 2)) << code;
        EXPECT_EQ(key, 0);
    }
    EXPECT_EQ(rig.stacks(), Stacks(1, 0));
    rig.edit("a");
    for (auto [code, text] : {std::pair(90, ""), std::pair(89, "a")}) {
        int key = code;
        rig.undo.onKeyDown(key, 2);
        EXPECT_EQ(rig.box.text(), text) << code;
    }
    int key = 90;
    EXPECT_FALSE(rig.undo.onKeyDown(key, 0)); // plain Z is typing
    EXPECT_FALSE(rig.undo.onKeyDown(key, 3)); // Ctrl+Shift is not the Ctrl state
    EXPECT_EQ(std::pair(key, rig.box.text()), std::pair(90, "a"s));
}
