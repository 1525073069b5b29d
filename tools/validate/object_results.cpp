#include "tools/validate/results.h"

namespace {

const std::string kList = tree::hub("Vek_ObjectList.txt");
const std::string kPath = tree::hub("Vek_ObjectPath.txt");

void expectAdding(Session& session) {
    tree::write(kList, "B\n");
    session.expect(1.0f, "AddVekObject", "A");
    session.expectFile(kList, "A\nB\n");
    session.expect(1.0f, "AddVekObject", "A");
    session.expectFile(kList, "A\nA\nB\n");
    tree::write(kList, "A\nB\n");
    session.expect(0.0f, "AddVekObjectToList", "C");
    session.expectFile(kList, "A\nB\nC\n");
    // Blanks are taken off by who reads the list.
    tree::write(kList, "");
    session.expect(1.0f, "AddVekObject", " A \t ");
    session.expect(0.0f, "AddVekObjectToList", "\tB ");
    session.expectFile(kList, " A \t \n\tB \n");
    session.expect(1.0f, "ClearVekObjectList");
    session.expectFile(kList, "");
    remove(kList.c_str());
    session.expect(0.0f, "AddVekObject", "A");
    session.expectNoFile(kList);
    session.expect(0.0f, "AddVekObjectToList", "A");
    session.expectFile(kList, "A\n");
    remove(kList.c_str());
    session.expect(1.0f, "ClearVekObjectList");
    session.expectFile(kList, "");
}

void expectReading(Session& session) {
    tree::write(kList, " A \r\n\r\n\tB");
    session.expect(2.0f, "ReadVekObjectList");
    HostBlock first = HostBlock::out(), second = HostBlock::out();
    session.expect(0.0f, "GetVekObjectPath", "", 0.0, first.data());
    session.expectText(first, "A");
    session.expect(0.0f, "GetVekObjectPath", "", 1.9, second.data());
    session.expectText(second, "B");
    for (const double none : {2.0, 5.0, -1.0}) {
        HostBlock block = HostBlock::out();
        session.expect(0.0f, "GetVekObjectPath", "", none, block.data());
        session.expectUntouched(block);
    }
    tree::write(kList, "A\nB\nC\n");
    session.expect(3.0f, "ReadVekObjectList");
    std::string many;
    for (int i = 0; i < 100; ++i) many += "object" + std::to_string(i) + "\n";
    tree::write(kList, many);
    session.expect(100.0f, "ReadVekObjectList");
    HostBlock last = HostBlock::out();
    session.expect(0.0f, "GetVekObjectPath", "", 99.0, last.data());
    session.expectText(last, "object99");
    tree::write(kList, "");
    session.expect(0.0f, "ReadVekObjectList");
    session.expect(0.0f, "ReleaseVekObjectList");
}

void expectExtracting(Session& session, const std::string& list, const std::string& object,
                      const std::string& rest) {
    tree::write(kList, list);
    session.expect(1.0f, "ExtractVekObject");
    session.expectFile(kPath, object);
    session.expectFile(kList, rest);
}

void expectNothingToExtract(Session& session) {
    remove(kPath.c_str());
    for (const char* list : {"", "\n"}) {
        tree::write(kList, list);
        session.expect(0.0f, "ExtractVekObject");
        session.expectFile(kList, list);
    }
    remove(kList.c_str());
    session.expect(0.0f, "ExtractVekObject");
    session.expectNoFile(kList);
    session.expectNoFile(kPath);
}

// A folder stands where the list should.
void expectNoList(Session& session) {
    tree::makeFolder(kList);
    session.expect(0.0f, "AddVekObject", "A");
    session.expect(0.0f, "AddVekObjectToList", "A");
    session.expect(0.0f, "ClearVekObjectList");
    session.expect(0.0f, "ReadVekObjectList");
    session.expect(0.0f, "ExtractVekObject");
}

}  // namespace

void checkObjectResults(const Settings& settings, Report& report) {
    expectOrdinary(settings, report, "objects");
    tree::make();
    Session session(settings, report);
    session.prepare();
    expectAdding(session);
    expectReading(session);
    expectExtracting(session, "A\nB\n", "A", "B\n");
    expectExtracting(session, "A", "A", "");
    expectExtracting(session, "\r\nA", "\nA", "");
    expectNothingToExtract(session);
    expectNoList(session);
}
