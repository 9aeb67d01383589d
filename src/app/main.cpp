// stockverify: the godown stock verification module and its tools.
#include "app/Command.h"
#include "ado/ProviderVersions.h"

#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

namespace app {

std::vector<Command>& commands() {
    static std::vector<Command> all;
    return all;
}

} // namespace app

namespace {

void printHelp(std::ostream& out) {
    out << "Usage: stockverify COMMAND [OPTIONS]\n"
           "       stockverify --version\n"
           "\n"
           "Godown stock verification: count what stands in a warehouse, record it\n"
           "against the book stock, and bring the godown's stock into line.\n"
           "\n"
           "Commands:\n";
    auto all = app::commands();
    std::sort(all.begin(), all.end(), [](auto& a, auto& b) { return a.name < b.name; });
    for (const auto& c : all) {
        std::string name = c.name;
        name.resize(std::max<std::size_t>(name.size() + 2, 12), ' ');
        out << "  " << name << c.summary << "\n";
    }
    if (all.empty())
        out << "  (none yet)\n";
    out << "\n"
           "Options:\n"
           "  -h, --help    this text\n"
           "  -V, --version the version of stockverify and of the database libraries\n"
           "                it runs with\n"
           "\n"
           "Exit codes: 0 done, 1 a failure, 2 a command line it cannot use; each\n"
           "command's --help lists its own (run: 3 a config file, 4 no clerk).\n"
           "\n"
           "'stockverify COMMAND --help' tells more about a command; the manual is\n"
           "stockverify(1).\n";
}

void printVersion(std::ostream& out) {
    out << "stockverify " << STOCKVERIFY_VERSION << "\n";
    for (const auto& [library, version] : ado::providerVersions())
        out << library << " " << version << "\n";
}

} // namespace

int main(int argc, char** argv) {
    std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty() || args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
        printHelp(std::cout);
        return args.empty() ? 2 : 0;
    }
    if (args[0] == "--version" || args[0] == "-V") {
        printVersion(std::cout);
        return 0;
    }
    for (const auto& c : app::commands()) {
        if (c.name != args[0])
            continue;
        std::vector<std::string> rest(args.begin() + 1, args.end());
        if (std::find(rest.begin(), rest.end(), "--help") != rest.end()) {
            std::cout << c.usage;
            return 0;
        }
        return c.run(rest);
    }
    std::cerr << "stockverify: unknown command '" << args[0] << "'\n\n";
    printHelp(std::cerr);
    return 2;
}
