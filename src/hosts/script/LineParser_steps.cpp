#include "hosts/script/LineParser.h"

#include "hosts/script/KeyName.h"

#include "forms/MsgBox.h"
#include "forms/Screen.h"

#include "vb/Date.h"

#include <array>
#include <cstdio>
#include <utility>

namespace script {

namespace {

/// Reads "yyyy-mm-dd" or "hh:mm[:ss]" into numbers; false when the text has another shape.
bool readParts(const std::string &text, char separator, std::array<int, 3> &parts, int &count) {
    count = 0;
    std::size_t start = 0;
    while (count < 3) {
        std::size_t end = text.find(separator, start);
        std::string piece =
            text.substr(start, end == std::string::npos ? std::string::npos : end - start);
        if (piece.empty() || piece.size() > 4 ||
            piece.find_first_not_of("0123456789") != std::string::npos) {
            return false;
        }
        parts[count++] = std::stoi(piece);
        if (end == std::string::npos) {
            return true;
        }
        start = end + 1;
    }
    return false;
}

} // namespace

vb::Date LineParser::date(std::string_view what) {
    std::string text = word(what);
    std::array<int, 3> p{};
    int count = 0;
    if (!readParts(text, '-', p, count) || count != 3 ||
        !vb::isValidCalendarDate(p[0], p[1], p[2])) {
        fail(std::string(what) + " must be a day as YYYY-MM-DD, not " + inQuotes(text));
    }
    return vb::DateSerial(p[0], p[1], p[2]);
}

vb::Date LineParser::dateTime(std::string_view what) {
    vb::Date day = date(what);
    if (atEnd()) {
        return day;
    }
    std::string text = word("a time");
    std::array<int, 3> p{};
    int count = 0;
    if (!readParts(text, ':', p, count) || count < 2 || p[0] > 23 || p[1] > 59 || p[2] > 59) {
        fail("the time must be HH:MM or HH:MM:SS, not " + inQuotes(text));
    }
    return day + vb::TimeSerial(p[0], p[1], p[2]).serial;
}

SetStep LineParser::setStep() {
    std::string name = keyword();
    SetStep step;
    auto numberOf = [&](SessionField field) {
        step.field = field;
        step.number = number("a number");
    };
    if (name == "connection") {
        step.field = SessionField::Connection;
        step.text = restOfLine("a connection string");
    } else if (name == "company") {
        numberOf(SessionField::Company);
    } else if (name == "user") {
        numberOf(SessionField::User);
    } else if (name == "godown") {
        numberOf(SessionField::Godown);
    } else if (name == "interface") {
        numberOf(SessionField::Interface);
    } else if (name == "watchdog") {
        numberOf(SessionField::Watchdog);
        if (step.number < 1) {
            fail("the watchdog needs at least 1 turn");
        }
    } else if (name == "processdate") {
        step.field = SessionField::ProcessDate;
        step.date = date("the process date");
    } else if (name == "clock") {
        step.field = SessionField::Clock;
        step.date = dateTime("the clock");
    } else if (name == "title") {
        step.field = SessionField::Title;
        step.text = value("the message title");
    } else if (name == "home") {
        step.field = SessionField::Home;
        step.text = value("the program folder");
    } else {
        fail("set knows connection, company, user, godown, interface, processdate, title, "
             "clock, home and watchdog, not \"" +
             name + "\"");
    }
    end();
    return step;
}

DbStep LineParser::dbStep() {
    DbStep step;
    if (atKeyword("empty")) {
        step.kind = DbStep::Kind::Empty;
    } else if (atKeyword("demo")) {
        step.kind = DbStep::Kind::Demo;
        while (!atEnd()) {
            if (atKeyword("items")) {
                step.items = number("the number of items");
                if (*step.items < 12) {
                    fail("the demo needs at least 12 items");
                }
            } else if (atKeyword("date")) {
                vb::DateTimeParts d = vb::partsOf(date("the demo's date"));
                step.date =
                    std::chrono::sys_days{std::chrono::year{d.year} / std::chrono::month(d.month) /
                                          std::chrono::day(d.day)};
            } else {
                fail("db demo takes items N and date YYYY-MM-DD, not " +
                     inQuotes(word("an option")));
            }
        }
    } else {
        step.kind = DbStep::Kind::File;
        step.path = word("demo, empty or the path of a database file");
    }
    end();
    return step;
}

AnswerStep LineParser::answerStep() {
    static const std::array<std::pair<const char *, int>, 7> answers{{
        {"ok", forms::vbOK},
        {"cancel", forms::vbCancel},
        {"abort", forms::vbAbort},
        {"retry", forms::vbRetry},
        {"ignore", forms::vbIgnore},
        {"yes", forms::vbYes},
        {"no", forms::vbNo},
    }};
    std::string answer = keyword();
    end();
    for (const auto &[name, value] : answers) {
        if (answer == name) {
            return AnswerStep{value};
        }
    }
    fail("answer takes ok, cancel, yes, no, abort, retry or ignore, not \"" + answer + "\"");
}

FailStep LineParser::failStep() {
    FailStep step;
    std::string kind = keyword();
    if (kind == "sql") {
        step.kind = FailStep::Kind::Statement;
        if (atQuoted()) {
            step.firstWords = word("the statement's first words");
            if (!atKeyword("error")) {
                step.nth = number("which of those statements (1 is the next)");
                if (!atKeyword("error")) {
                    fail("fail sql wants error NUMBER after the statement");
                }
            }
        } else {
            step.nth = number("the statement's first words in quotes, or which statement");
            if (!atKeyword("error")) {
                fail("fail sql wants error NUMBER after the statement");
            }
        }
    } else {
        if (kind == "update") {
            step.kind = FailStep::Kind::Update;
        } else if (kind == "begintrans") {
            step.kind = FailStep::Kind::BeginTrans;
        } else if (kind == "committrans") {
            step.kind = FailStep::Kind::CommitTrans;
        } else if (kind == "rollbacktrans") {
            step.kind = FailStep::Kind::RollbackTrans;
        } else {
            fail("fail knows sql, update, begintrans, committrans and rollbacktrans, not \"" +
                 kind + "\"");
        }
        if (!atKeyword("error")) {
            step.nth = number("which call (1 is the next)");
            if (!atKeyword("error")) {
                fail("fail " + kind + " wants error NUMBER");
            }
        }
    }
    if (step.nth < 1) {
        fail("the calls count from 1, the next one");
    }
    step.number = number("the error number");
    if (!atEnd()) {
        step.description = value("the error's description");
    }
    end();
    return step;
}

ExpectErrorStep LineParser::expectErrorStep() {
    ExpectErrorStep step;
    step.number = number("the error number");
    if (!atEnd()) {
        step.description = value("the error's description");
    }
    end();
    return step;
}

ExpectColumnStep LineParser::expectColumnStep(ControlRef control) {
    ExpectColumnStep step;
    step.control = std::move(control);
    step.col = number("a column");
    while (!atEnd()) {
        if (atKeyword("width")) {
            step.width = number("the width in twips");
        } else if (atKeyword("alignment")) {
            step.alignment = number("the alignment");
        } else if (atKeyword("position")) {
            step.position = number("the position");
        } else {
            fail("expect CONTROL column N takes width N, alignment N and position N, not " +
                 inQuotes(word("an option")));
        }
    }
    if (!step.width && !step.alignment && !step.position) {
        fail("expect CONTROL column N wants width, alignment or position");
    }
    return step;
}

Spot LineParser::spot(const std::string &gesture) {
    Spot s;
    if (atKeyword("row")) {
        s.kind = Spot::Kind::Row;
        s.row = number("a row");
    } else if (atKeyword("cell")) {
        s.kind = Spot::Kind::Cell;
        s.row = number("a row");
        s.col = number("a column");
    } else if (atKeyword("column")) {
        s.kind = Spot::Kind::Column;
        s.col = number("a column");
    }
    bool allowed = s.kind == Spot::Kind::Control || (gesture == "click") ||
                   (gesture == "dblclick" && s.kind != Spot::Kind::Column) ||
                   (gesture == "rightclick" && s.kind == Spot::Kind::Row) ||
                   (gesture == "hover" && s.kind == Spot::Kind::Cell);
    if (gesture == "select" && s.kind != Spot::Kind::Row) {
        fail("select wants a row: select CONTROL row N");
    }
    if (!allowed && gesture != "select") {
        fail(gesture + " cannot aim at that part of a control");
    }
    return s;
}

PointerStep LineParser::pointerStep(const std::string &gesture) {
    PointerStep step;
    step.gesture = gesture == "dblclick"     ? PointerStep::Gesture::DblClick
                   : gesture == "rightclick" ? PointerStep::Gesture::RightClick
                   : gesture == "hover"      ? PointerStep::Gesture::Hover
                                             : PointerStep::Gesture::Click;
    step.control = control();
    step.spot = spot(gesture);
    if (gesture == "rightclick") {
        if (atKeyword("choose")) {
            step.menuChoice = word("a menu item");
        } else if (atKeyword("dismiss")) {
            step.menuChoice = std::string();
        }
    }
    end();
    return step;
}

PressStep LineParser::pressStep() {
    PressStep step;
    do {
        std::string name = word("a key");
        auto key = parseKeyName(name);
        if (!key) {
            fail("unknown key " + inQuotes(name));
        }
        step.keys.push_back(*key);
    } while (!atEnd());
    return step;
}

ExpectMsgBoxStep LineParser::expectMsgBoxStep() {
    ExpectMsgBoxStep step;
    step.text = value("the message text");
    while (!atEnd()) {
        if (atKeyword("style")) {
            step.style = number("the style number");
        } else if (atKeyword("title")) {
            step.title = value("the title");
        } else if (atKeyword("untitled")) {
            step.untitled = true;
        } else {
            fail("expect msgbox takes style N, and title \"TEXT\" or untitled, not " +
                 inQuotes(word("an option")));
        }
    }
    if (step.untitled && step.title) {
        fail("a message box has a title of its own or is untitled, not both");
    }
    return step;
}

ExpectFocusStep LineParser::expectFocusStep() {
    ExpectFocusStep step;
    step.negated = atKeyword("not");
    if (!atKeyword("none")) {
        step.control = control();
    }
    end();
    return step;
}

ExpectPointerStep LineParser::expectPointerStep() {
    ExpectPointerStep step;
    if (atKeyword("default")) {
        step.pointer = forms::vbDefault;
    } else if (atKeyword("hourglass")) {
        step.pointer = forms::vbHourglass;
    } else {
        step.pointer = number("the pointer (default, hourglass or a number)");
    }
    end();
    return step;
}

ExpectFormStep LineParser::expectFormStep(ExpectFormStep::State state) {
    ExpectFormStep step{state, word("a form name")};
    end();
    return step;
}

ExpectOutputStep LineParser::expectOutputStep(ExpectOutputStep::Kind kind) {
    ExpectOutputStep step;
    step.kind = kind;
    if (kind == ExpectOutputStep::Kind::Printer) {
        step.port = word("a printer port");
    }
    step.file = value(kind == ExpectOutputStep::Kind::Report ? "the report file"
                                                             : "the file of the expected text");
    if (kind == ExpectOutputStep::Kind::Report && atKeyword("title")) {
        step.title = value("the title");
    }
    end();
    return step;
}

} // namespace script
