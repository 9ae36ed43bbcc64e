// The undo engine driven by an in-memory box and a fake timer. A "pause" is the timer firing.
#include "textdocs/clsUndo.h"

#include <gtest/gtest.h>

using namespace zarvion::textdocs;

namespace {

class FakeTimer : public UndoTimer {
public:
    void setInterval(int ms) override { interval = ms; }
    void setEnabled(bool e) override
    {
        if (e && !enabled) {
            ++starts;
        }
        enabled = e;
    }
    bool isEnabled() const override { return enabled; }
    int interval = 0;
    bool enabled = false;
    int starts = 0;
};

//! A box, a timer and the engine, wired as a window wires them.
class UndoRig {
public:
    UndoRig()
    {
        box.onChange = [this] { undo.onChange(); };
        box.onSelectionChange = [this] { undo.onSelectionChange(); };
        undo.StateChanged = [this] { ++stateChanges; };
        created = undo.Create(box, timer, 250);
    }
    UndoRig(const UndoRig&) = delete;
    UndoRig& operator=(const UndoRig&) = delete;

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

    MemoryTextBox box;
    FakeTimer timer;
    clsUndo undo;
    int stateChanges = 0;
    bool created = false;
};

} // namespace

TEST(clsUndo, CreateResetsAndWaitsForTheBaseline)
{
    UndoRig rig;
    EXPECT_TRUE(rig.created);
    EXPECT_EQ(rig.timer.interval, 250);
    EXPECT_TRUE(rig.timer.enabled); // the baseline comes one interval later
    EXPECT_FALSE(rig.undo.canUndo());
    EXPECT_FALSE(rig.undo.canRedo());
    EXPECT_EQ(rig.stateChanges, 1);
    rig.pause();
    EXPECT_FALSE(rig.timer.enabled);
    EXPECT_EQ(rig.undo.undoStack().size(), 1u);
    EXPECT_FALSE(rig.undo.canUndo());
    EXPECT_EQ(rig.stateChanges, 2);
    EXPECT_EQ(clsUndo::TimerName("RichTextBox1"), "UndoTimer_RichTextBox1");
}

TEST(clsUndo, UndoAndRedoOneEdit)
{
    UndoRig rig;
    rig.pause();
    rig.edit("abc");
    ASSERT_EQ(rig.undo.undoStack().size(), 2u);
    EXPECT_TRUE(rig.undo.canUndo());
    rig.undo.Undo();
    EXPECT_EQ(rig.box.text(), "");
    EXPECT_EQ(rig.undo.undoStack().size(), 1u);
    EXPECT_EQ(rig.undo.redoStack().size(), 1u);
    EXPECT_TRUE(rig.undo.canRedo());
    EXPECT_FALSE(rig.timer.enabled); // the restore is no new state
    EXPECT_TRUE(rig.undo.enabled());
    rig.undo.Redo();
    EXPECT_EQ(rig.box.text(), "abc");
    EXPECT_EQ(rig.undo.undoStack().size(), 2u);
    EXPECT_FALSE(rig.undo.canRedo());
    EXPECT_FALSE(rig.timer.enabled);
    // Reset 1 + two snapshots + undo + redo.
    EXPECT_EQ(rig.stateChanges, 5);
    // Nothing more to redo: no change, no event.
    rig.undo.Redo();
    EXPECT_EQ(rig.stateChanges, 5);
}

TEST(clsUndo, TypingWithoutPauseIsOneStep)
{
    UndoRig rig;
    rig.pause();
    rig.box.type("a");
    rig.box.type("b");
    rig.box.type("c");
    rig.pause();
    EXPECT_EQ(rig.undo.undoStack().size(), 2u);
    rig.undo.Undo();
    EXPECT_EQ(rig.box.text(), "");
}

TEST(clsUndo, KeepsAtMostTwentyOneStates)
{
    UndoRig rig;
    rig.pause(); // state 0: ""
    for (int i = 1; i <= 25; ++i) {
        rig.edit("x"); // state i: i times "x"
    }
    // 26 states were taken; the first five are gone.
    EXPECT_EQ(rig.undo.undoStack().size(), 21u);
    for (int i = 0; i < 30; ++i) {
        rig.undo.Undo();
    }
    EXPECT_EQ(rig.box.text(), "xxxxx");
    EXPECT_EQ(rig.undo.redoStack().size(), 20u);
    EXPECT_FALSE(rig.undo.canUndo());
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
    EXPECT_FALSE(rig.undo.canRedo());
    EXPECT_EQ(rig.undo.undoStack().back().Text, "one!");
}

TEST(clsUndo, SelectionMemory)
{
    UndoRig rig;
    rig.box.setText("hello world");
    rig.pause(); // baseline "hello world"
    rig.box.setSelStart(6);
    rig.box.setSelLength(5); // "world" selected, recorded: previous (6,0), current (6,5)
    EXPECT_EQ(rig.undo.currentSelection().start, 6);
    EXPECT_EQ(rig.undo.currentSelection().length, 5);
    EXPECT_EQ(rig.undo.previousSelection().length, 0);

    rig.box.type("X"); // "hello X"; the caret move while the timer runs is not recorded
    EXPECT_EQ(rig.undo.currentSelection().length, 5);
    rig.pause();
    // The baseline now carries the selection that stood before the last selection change.
    EXPECT_EQ(rig.undo.undoStack()[0].SelStart, 6);
    EXPECT_EQ(rig.undo.undoStack()[0].SelLength, 0);
    EXPECT_EQ(rig.undo.undoStack()[1].SelStart, 0); // a new element starts at 0, 0
    // After a snapshot the previous selection's length takes the start.
    EXPECT_EQ(rig.undo.previousSelection().start, 7);
    EXPECT_EQ(rig.undo.previousSelection().length, 7);
    EXPECT_EQ(rig.undo.currentSelection().start, 7);
    EXPECT_EQ(rig.undo.currentSelection().length, 0);

    rig.edit("Y"); // "hello XY"
    EXPECT_EQ(rig.undo.undoStack()[1].SelStart, 7);
    EXPECT_EQ(rig.undo.undoStack()[1].SelLength, 7);

    rig.undo.Undo();
    EXPECT_EQ(rig.box.text(), "hello X");
    EXPECT_EQ(rig.box.selStart(), 7);
    EXPECT_EQ(rig.box.selLength(), 0); // 7 characters asked, none left behind the caret
    rig.undo.Undo();
    EXPECT_EQ(rig.box.text(), "hello world");
    EXPECT_EQ(rig.box.selStart(), 6);
}

TEST(clsUndo, UndoKeepsTheViewRedoDoesNot)
{
    UndoRig rig;
    std::string lines;
    for (int i = 0; i < 10; ++i) {
        lines += "line\n";
    }
    rig.box.setText(lines);
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
    int key = 90;
    EXPECT_TRUE(rig.undo.onKeyDown(key, 2)); // nothing to undo, consumed all the same
    EXPECT_EQ(key, 0);
    EXPECT_EQ(rig.undo.undoStack().size(), 1u);
    key = 89;
    EXPECT_TRUE(rig.undo.onKeyDown(key, 2));
    EXPECT_EQ(key, 0);

    rig.edit("a");
    key = 90;
    rig.undo.onKeyDown(key, 2);
    EXPECT_EQ(rig.box.text(), "");
    key = 89;
    rig.undo.onKeyDown(key, 2);
    EXPECT_EQ(rig.box.text(), "a");

    key = 90;
    EXPECT_FALSE(rig.undo.onKeyDown(key, 0)); // plain Z is typing
    EXPECT_EQ(key, 90);
    EXPECT_FALSE(rig.undo.onKeyDown(key, 3)); // Ctrl+Shift is not the Ctrl state
    EXPECT_EQ(rig.box.text(), "a");
}

TEST(clsUndo, ResetDropsTheHistory)
{
    UndoRig rig;
    rig.pause();
    rig.edit("a");
    rig.undo.Undo();
    rig.undo.Reset();
    EXPECT_TRUE(rig.undo.undoStack().empty());
    EXPECT_TRUE(rig.undo.redoStack().empty());
    EXPECT_TRUE(rig.timer.enabled);
    rig.pause();
    EXPECT_EQ(rig.undo.undoStack().size(), 1u);
    EXPECT_EQ(rig.undo.undoStack()[0].Text, "");
}
