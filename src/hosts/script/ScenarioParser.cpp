#include "hosts/script/ScenarioParser.h"

#include "hosts/script/Text.h"

#include "hosts/script/Failure.h"
#include "hosts/script/LineParser.h"
#include "hosts/script/Token.h"

#include <algorithm>
#include <utility>

namespace script {

namespace {

/// Reads the lines of a scenario one command at a time; a command with a
/// block (`expect rows`) takes the lines under it as well.
class Parser {
public:
    Parser(std::string_view text, const std::vector<std::string> &targets) : targets_(targets) {
        std::size_t start = 0;
        while (start <= text.size()) {
            std::size_t end = text.find('\n', start);
            if (end == std::string_view::npos) {
                end = text.size();
            }
            std::string_view line = text.substr(start, end - start);
            if (!line.empty() && line.back() == '\r') {
                line.remove_suffix(1);
            }
            lines_.emplace_back(line);
            start = end + 1;
        }
        if (!lines_.empty() && lines_.back().empty()) {
            lines_.pop_back(); // the newline that ends the last line
        }
    }

    std::vector<Step> steps() {
        std::vector<Step> out;
        while (next_ < lines_.size()) {
            int number = static_cast<int>(++next_);
            std::string_view text = trimBlanks(lines_[number - 1]);
            if (text.empty() || text.front() == '#') {
                continue;
            }
            LineParser line(text, number, tokenize(text, number));
            Step step{number, std::string(text), command(line)};
            out.push_back(std::move(step));
        }
        return out;
    }

    int lastLine() const { return static_cast<int>(lines_.size()); }

private:
    Action command(LineParser &line);
    Action expect(LineParser &line);
    /// `expect CONTROL.Property VALUE`, `expect CONTROL cell R C VALUE`, `expect CONTROL rows`.
    Action expectOnControl(LineParser &line);
    Action show(LineParser &line);
    /// The lines under a command, up to a blank line or the end of the file.
    Rows block();
    /// The statements under `expect sql`, one a line: as written, blanks at
    /// either end dropped, or in double quotes with escapes when a statement
    /// has blanks at an end or spans lines.
    std::vector<std::string> statementBlock();

    const std::vector<std::string> &targets_;
    std::vector<std::string> lines_;
    std::size_t next_ = 0;
};

Action Parser::command(LineParser &line) {
    std::string word = line.keyword();
    if (word == "set") {
        return line.setStep();
    }
    if (word == "db") {
        return line.dbStep();
    }
    if (word == "sql") {
        return SqlStep{line.restOfLine("a SQL statement")};
    }
    if (word == "show") {
        return show(line);
    }
    if (word == "answer") {
        return line.answerStep();
    }
    if (word == "fail") {
        return line.failStep();
    }
    if (word == "mark") {
        if (!line.atKeyword("sql")) {
            line.fail("mark knows sql");
        }
        line.end();
        return MarkSqlStep{};
    }
    if (word == "click" || word == "dblclick" || word == "rightclick" || word == "hover" ||
        word == "select") {
        return line.pointerStep(word);
    }
    if (word == "type") {
        TypeStep step{line.value("the text to type")};
        line.end();
        return step;
    }
    if (word == "press") {
        return line.pressStep();
    }
    if (word == "choose") {
        ChooseStep step{line.control(), line.value("the item to choose")};
        line.end();
        return step;
    }
    if (word == "close" || word == "dump") {
        std::string form = line.optionalName();
        line.end();
        return word == "close" ? Action{CloseStep{form}} : Action{DumpStep{form}};
    }
    if (word == "expect") {
        return expect(line);
    }
    line.fail("unknown command \"" + word + "\"");
}

Action Parser::show(LineParser &line) {
    std::string target = line.word("a show target");
    line.end();
    if (std::find(targets_.begin(), targets_.end(), target) == targets_.end()) {
        std::string known;
        for (const auto &t : targets_) {
            known += (known.empty() ? "" : ", ") + t;
        }
        line.fail("unknown show target \"" + target +
                  "\" (known: " + (known.empty() ? "none in this program" : known) + ")");
    }
    return ShowStep{target};
}

Action Parser::expect(LineParser &line) {
    if (line.atKeyword("rows")) {
        ExpectRowsStep step{line.restOfLine("a SELECT statement"), {}};
        step.rows = block();
        return step;
    }
    if (line.atKeyword("sql")) {
        line.end();
        return ExpectSqlStep{statementBlock()};
    }
    if (line.atKeyword("error")) {
        return line.expectErrorStep();
    }
    if (line.atKeyword("msgbox")) {
        return line.expectMsgBoxStep();
    }
    if (line.atKeyword("focus")) {
        return line.expectFocusStep();
    }
    if (line.atKeyword("pointer")) {
        return line.expectPointerStep();
    }
    if (line.atKeyword("shown")) {
        return line.expectFormStep(ExpectFormStep::State::Shown);
    }
    if (line.atKeyword("active")) {
        return line.expectFormStep(ExpectFormStep::State::Active);
    }
    if (line.atKeyword("closed")) {
        return line.expectFormStep(ExpectFormStep::State::Closed);
    }
    if (line.atKeyword("viewer")) {
        return line.expectOutputStep(ExpectOutputStep::Kind::Viewer);
    }
    if (line.atKeyword("printed")) {
        return line.expectOutputStep(ExpectOutputStep::Kind::Printer);
    }
    if (line.atKeyword("report")) {
        return line.expectOutputStep(ExpectOutputStep::Kind::Report);
    }
    return expectOnControl(line);
}

Action Parser::expectOnControl(LineParser &line) {
    ControlRef control = line.controlWithProperty();
    if (!line.property().empty()) {
        ExpectPropertyStep step{control, line.property(), line.value("the expected value")};
        line.end();
        return step;
    }
    if (line.atKeyword("cell")) {
        ExpectCellStep step{control, line.number("a row"), line.number("a column"), {}};
        step.value = line.value("the expected value");
        line.end();
        return step;
    }
    if (line.atKeyword("rows")) {
        line.end();
        return ExpectControlRowsStep{control, block()};
    }
    if (line.atKeyword("column")) {
        return line.expectColumnStep(control);
    }
    line.fail("expect " + control.text() +
              " wants .Property VALUE, cell ROW COL VALUE, column N ..., or rows and a block");
}

Rows Parser::block() {
    Rows rows;
    while (next_ < lines_.size()) {
        std::string_view text = lines_[next_];
        if (trimBlanks(text).empty()) {
            break;
        }
        ++next_;
        if (trimBlanks(text).front() == '#') {
            continue;
        }
        rows.push_back(LineParser::blockCells(text));
    }
    return rows;
}

std::vector<std::string> Parser::statementBlock() {
    std::vector<std::string> statements;
    while (next_ < lines_.size()) {
        std::string_view text = trimBlanks(lines_[next_]);
        if (text.empty()) {
            break;
        }
        int number = static_cast<int>(++next_);
        if (text.front() == '#') {
            continue;
        }
        if (text.front() != '"') {
            statements.emplace_back(text);
            continue;
        }
        std::vector<Token> tokens = tokenize(text, number);
        if (tokens.size() != 1) {
            throw BadScript(number, "a quoted statement stands alone on its line");
        }
        statements.push_back(tokens.front().text);
    }
    return statements;
}

} // namespace

Scenario parseScenario(std::string_view text, std::string fileName, std::filesystem::path baseDir,
                       const std::vector<std::string> &targets) {
    Parser parser(text, targets);
    Scenario scenario;
    scenario.fileName = std::move(fileName);
    scenario.baseDir = std::move(baseDir);
    scenario.steps = parser.steps();
    scenario.lastLine = parser.lastLine();
    return scenario;
}

} // namespace script
