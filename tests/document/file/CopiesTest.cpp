#include "core/document/file/Copies.h"

#include "document/DocumentFixture.h"

#include <algorithm>
#include <cerrno>

namespace tallybook::document {
namespace {

using platform::Bytes;

const Bytes kOld = {1, 2, 3};
const Bytes kNew = {1, 2, 4, 5};
constexpr const char* kBackup = "/app/Backup/MS2_a.pdb";
constexpr const char* kDated = "/app/Backup/MS2_a 2003-03-05 130509.pdb";

struct Copies : test::DocumentFixture {
    Copies() {
        t.files.addFolder("/app/Backup");
        t.files.addFolder("/app/Temp");
        field(1, model::FieldType::Image, "Cover");
    }
    platform::Status refresh(const Bytes& bytes) { return refreshBackup(t, "/home/MS2_a.pdb", bytes); }
};

TEST_F(Copies, firstBackupIsTheFileAlone) {
    EXPECT_TRUE(refresh(kNew));
    EXPECT_EQ(t.files.bytes(kBackup), kNew);
    EXPECT_EQ(t.files.count(), 1U);
}

TEST_F(Copies, unchangedFileIsNotCopiedAgain) {
    EXPECT_TRUE(refresh(kNew));
    EXPECT_TRUE(refresh(kNew));
    EXPECT_EQ(t.files.count(), 1U);
}

TEST_F(Copies, copyOfOtherContentIsKeptWithDateAndTime) {
    EXPECT_TRUE(refresh(kOld));
    EXPECT_TRUE(refresh(kNew));
    EXPECT_EQ(t.files.bytes(kBackup), kNew);
    EXPECT_EQ(t.files.bytes(kDated), kOld);
    EXPECT_EQ(t.files.count(), 2U);
}

TEST_F(Copies, fiveOlderOnesStay) {
    const std::string names[] = {"2001-01-01 000000", "2002-01-01 000000", "2002-12-31 235959", "2003-01-01 000000",
                                 "2003-02-01 000000"};
    for (const std::string& name : names)
        t.files.put("/app/Backup/MS2_a " + name + ".pdb", {9});
    t.files.put(kBackup, kOld);
    // Names that only look alike are somebody else's.
    t.files.put("/app/Backup/MS2_a old.pdb", {8});
    t.files.put("/app/Backup/MS2_ab 2001-01-01 000000.pdb", {8});
    EXPECT_TRUE(refresh(kNew));
    EXPECT_FALSE(t.files.has("/app/Backup/MS2_a 2001-01-01 000000.pdb"));
    for (const char* name : {"2002-01-01 000000", "2002-12-31 235959", "2003-01-01 000000", "2003-02-01 000000"})
        EXPECT_TRUE(t.files.has(std::string("/app/Backup/MS2_a ") + name + ".pdb")) << name;
    EXPECT_EQ(t.files.bytes(kDated), kOld);
    EXPECT_TRUE(t.files.has("/app/Backup/MS2_a old.pdb"));
    EXPECT_TRUE(t.files.has("/app/Backup/MS2_ab 2001-01-01 000000.pdb"));
}

TEST_F(Copies, failureAtAnyCallLeavesAWholeBackup) {
    for (int nth = 1;; ++nth) {
        test::MemoryFiles& files = t.files;
        files.put(kBackup, kOld);
        (void)files.remove(kDated);
        const int before = files.calls();
        files.failAt(nth, ENOSPC);
        const bool done = refresh(kNew).ok();
        EXPECT_TRUE(files.bytes(kBackup) == kOld || files.bytes(kBackup) == kNew) << nth;
        EXPECT_TRUE(!done || files.bytes(kBackup) == kNew) << nth;
        if (files.calls() - before < nth)
            break;
    }
}

TEST_F(Copies, temporaryCopyHoldsTheFile) {
    renewTempCopy(doc, t, "/home/MS2_a.pdb", kNew);
    EXPECT_EQ(doc.TempCopyPath, "/app/Temp/Copy_MS2_a.pdb");
    EXPECT_EQ(t.files.bytes("/app/Temp/Copy_MS2_a.pdb"), kNew);
}

TEST_F(Copies, databaseWithoutAnImageFieldHasNoTemporaryCopy) {
    field(1, model::FieldType::Text, "Title");
    renewTempCopy(doc, t, "/home/MS2_a.pdb", kNew);
    EXPECT_EQ(doc.TempCopyPath, "/home/MS2_a.pdb");
    EXPECT_EQ(t.files.count(), 0U);
}

TEST_F(Copies, withoutATemporaryCopyTheFileItselfServes) {
    t.files.put("/app/Temp/Copy_MS2_a.pdb", kOld);
    bool served = false;
    for (int nth = 1; nth < 40; ++nth) {
        const int before = t.files.calls();
        t.files.failAt(nth, ENOSPC);
        renewTempCopy(doc, t, "/home/MS2_a.pdb", kNew);
        if (t.files.calls() - before < nth)
            break;
        const bool fileItself = doc.TempCopyPath == "/home/MS2_a.pdb";
        EXPECT_TRUE(fileItself || t.files.bytes(doc.TempCopyPath) == kNew) << nth;
        served = served || fileItself;
    }
    EXPECT_TRUE(served);
}

} // namespace
} // namespace tallybook::document
