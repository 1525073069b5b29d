#include <cstring>

#include "tools/validate/results.h"

namespace {

const std::string kFile = tree::hub("own.txt");

void expectNumber(Session& session, const char* name, const char* text, double number) {
    tree::write(kFile, "K = " + std::string(text) + "\n");
    HostBlock key = HostBlock::in("k"), out = HostBlock::out();
    session.expect(1.0f, name, kFile, 0.0, key.data(), out.data());
    const double given = std::strcmp(name, "ReadConfigPrefAsFloat") == 0
                             ? static_cast<double>(out.number<float>())
                             : static_cast<double>(out.number<std::int32_t>());
    session.expectThat(given == number, std::string(name) + " gave " + asText(given) + " for " +
                                            text + "; stated is " + asText(number));
}

void expectText(Session& session, const char* stored, const char* text) {
    tree::write(kFile, "K = " + std::string(stored) + "\n");
    HostBlock key = HostBlock::in("K"), out = HostBlock::out();
    session.expect(1.0f, "ReadConfigPrefAsString", kFile, 0.0, key.data(), out.data());
    session.expectText(out, text);
}

// The key is not there, or its value is empty.
void expectNothing(Session& session, const std::string& bytes, float stated) {
    for (const char* name : {"ReadConfigPrefAsString", "ReadConfigPrefAsBool",
                             "ReadConfigPrefAsInt", "ReadConfigPrefAsFloat"}) {
        tree::write(kFile, bytes);
        HostBlock key = HostBlock::in("K"), out = HostBlock::out();
        session.expect(stated, name, kFile, 0.0, key.data(), out.data());
        session.expectUntouched(out);
    }
}

// Into a missing file, and then once more.
template <class Value>
void expectWritten(Session& session, const char* name, Value value, const std::string& line) {
    remove(kFile.c_str());
    for (const float stated : {0.0f, 1.0f}) {
        HostBlock key = HostBlock::in("key"), in = HostBlock::in("1234");
        std::memcpy(in.data(), &value, sizeof value);
        session.expect(stated, name, kFile, 0.0, key.data(), in.data());
        session.expectFile(kFile, line);
    }
}

void expectTextWritten(Session& session) {
    tree::write(kFile, "OTHER = 1\nKey = old\n");
    HostBlock key = HostBlock::in("key"), in = HostBlock::in("two words");
    session.expect(1.0f, "WriteConfigPrefAsString", kFile, 0.0, key.data(), in.data());
    session.expectFile(kFile, "KEY = two words\nOTHER = 1\n");
    const std::string nowhere = tree::hub("nowhere/own.txt");
    session.expect(0.0f, "WriteConfigPrefAsString", nowhere, 0.0, key.data(), in.data());
    session.expectNoFile(tree::hub("nowhere"));
}

}  // namespace

void checkPreferenceResults(const Settings& settings, Report& report) {
    expectOrdinary(settings, report, "preferences");
    tree::make();
    Session session(settings, report);
    expectText(session, "\"two words\"", "two words");
    expectText(session, "plain", "plain");
    expectNumber(session, "ReadConfigPrefAsBool", "nO", 0);
    expectNumber(session, "ReadConfigPrefAsBool", "whatever", 1);
    expectNumber(session, "ReadConfigPrefAsInt", "7.9", 7);
    expectNumber(session, "ReadConfigPrefAsInt", "-7.9", -7);
    expectNumber(session, "ReadConfigPrefAsFloat", "0.125", 0.125);
    expectNothing(session, "OTHER = 1\n", 0.0f);
    expectNothing(session, "K = \n", 1.0f);
    expectWritten(session, "WriteConfigPrefAsInt", std::int32_t{-42}, "KEY = -42\n");
    expectWritten(session, "WriteConfigPrefAsBool", std::int32_t{2}, "KEY = TRUE\n");
    expectWritten(session, "WriteConfigPrefAsBool", std::int32_t{0}, "KEY = FALSE\n");
    expectWritten(session, "WriteConfigPrefAsFloat", 0.5f, "KEY = 0.500000\n");
    expectTextWritten(session);
}
