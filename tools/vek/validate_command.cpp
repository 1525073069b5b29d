#include <fmt/format.h>
#include <unistd.h>

#include "tools/vek/commands.h"
#include "tools/vek/program_folder.h"

int validate(const std::vector<std::string>& words) {
    const std::string program = (programFolder() / "vek-validate").string();
    std::vector<char*> arguments = {const_cast<char*>(program.c_str())};
    for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    execv(program.c_str(), arguments.data());
    fmt::print(stderr, "vek: {} cannot be started; it belongs beside vek\n", program);
    return 2;
}
