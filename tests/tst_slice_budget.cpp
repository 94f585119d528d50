#include "TestSupport.h"

#include "widgets/SliceBudget.h"

// How much text a console slice moves, learned from what slices cost.
class SliceBudgetTest : public QObject
{
    Q_OBJECT

    static constexpr qsizetype Full = 512 * 1024; // a console at its limit

private slots:
    // Steady costs: a slice soon moves what fits in its time at that cost,
    // and never less than the minimum, however dear characters are.
    void learnsWhatACharacterCosts_data()
    {
        TestSupport::columns<double, qsizetype>({"nsPerChar", "allowance"});
        QTest::newRow("plain text") << 15.0 << qsizetype(SliceBudget::SliceNs / 15);
        QTest::newRow("coloured text") << 70.0 << qsizetype(SliceBudget::SliceNs / 70);
        QTest::newRow("dearer than the slice allows") << 1e5 << SliceBudget::MinSliceChars;
    }
    void learnsWhatACharacterCosts()
    {
        QFETCH(double, nsPerChar);
        QFETCH(qsizetype, allowance);
        SliceBudget budget;
        QCOMPARE(budget.moveNs(0), SliceBudget::SliceNs);
        for (int slice = 0; slice < 30; ++slice) {
            const qsizetype moved = budget.allowance(0);
            budget.noteSlice(moved, qint64(nsPerChar * double(moved)));
        }
        QVERIFY2(qAbs(budget.allowance(0) - allowance) <= allowance / 100,
                 qPrintable(QString::number(budget.allowance(0))));
        QVERIFY(qAbs(budget.expectedNs(1000) - qint64(nsPerChar * 1000)) <= qint64(nsPerChar * 10) + 1);
    }

    // A slice of a few characters, such as the end of a stream, says little
    // about what one costs.
    void smallSlicesTeachNothing()
    {
        SliceBudget budget;
        const qsizetype before = budget.allowance(0);
        budget.noteSlice(SliceBudget::MinSliceChars - 1, SliceBudget::SliceNs);
        QCOMPARE(budget.allowance(0), before);
        budget.noteSlice(SliceBudget::MinSliceChars, SliceBudget::SliceNs);
        QVERIFY(budget.allowance(0) < before);
    }

    // A copy of all the text shortens the slices of a full console at once;
    // slices without one lengthen them again, slowly. Costs too small, or
    // with too little text for a copy to explain, change nothing.
    void keepsTimeForCopiesOfTheWholeText()
    {
        SliceBudget budget;
        const qint64 usual = budget.moveNs(Full);
        QVERIFY(usual < SliceBudget::SliceNs);
        budget.noteOneOffCost(SliceBudget::CopySeenNs - 1, Full);
        budget.noteOneOffCost(20 * SliceBudget::CopySeenNs, SliceBudget::CopyMinCharacters - 1);
        QCOMPARE(budget.moveNs(Full), usual);

        budget.noteOneOffCost(6000000, Full); // about 11 ns a character
        const qint64 afterCopy = budget.moveNs(Full);
        QVERIFY(afterCopy < usual);
        QVERIFY(budget.allowance(Full) < budget.allowance(0));
        // Within the slice that saw it, it does not wear off.
        budget.noteSlice(0, 0);
        QVERIFY(budget.moveNs(Full) <= afterCopy + 1);
        for (int slice = 0; slice < 100; ++slice)
            budget.noteSlice(0, 0);
        QVERIFY(budget.moveNs(Full) > usual);

        // One cheaper copy does not make the next one cheap.
        SliceBudget cheaper;
        cheaper.noteOneOffCost(6000000, Full);
        cheaper.noteOneOffCost(2000000, Full);
        const qint64 cheapOnly = SliceBudget::SliceNs - 2000000; // what the cheap copy alone leaves
        QVERIFY(cheaper.moveNs(Full) < cheapOnly);
        QVERIFY(cheaper.moveNs(Full) > afterCopy);
    }

    // However large the console, a slice still moves text.
    void hugeDocumentsLeaveTheMinimum()
    {
        SliceBudget budget;
        budget.noteOneOffCost(100000000, Full);
        QCOMPARE(budget.moveNs(100 * Full), SliceBudget::MinMoveNs);
        QVERIFY(budget.allowance(100 * Full) >= SliceBudget::MinSliceChars);
    }
};

ZELMOR_TEST_MAIN(SliceBudgetTest)
#include "tst_slice_budget.moc"
