// script::Step: one line of a scenario, parsed and ready to run.
#pragma once

#include "forms/Keys.h"

#include "vb/Date.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace script {

/// A control as a scenario names it: "txtQty", "txtQty(2)" for a member of a
/// control array, "frmMaster!flexMaster" for a control of a shown form that is
/// not the active one.
struct ControlRef {
    std::string form; // empty: the active form
    std::string name;
    int index = -1;

    /// The name as the scenario wrote it.
    std::string text() const;
};

/// Where a pointer gesture lands on its control.
struct Spot {
    enum class Kind { Control, Row, Cell, Column };
    Kind kind = Kind::Control;
    int row = 0;
    int col = 0;
};

/// Rows of values, as a block under `expect rows` gives them.
using Rows = std::vector<std::vector<std::string>>;

enum class SessionField {
    Connection,
    Company,
    User,
    Godown,
    Interface,
    ProcessDate,
    Title,
    Clock,
    Home,
    Watchdog,
};

struct SetStep {
    SessionField field;
    std::string text;        // connection, title, home
    std::int32_t number = 0; // company, user, godown, interface, watchdog
    vb::Date date;           // process date, clock
};

struct DbStep {
    enum class Kind { Demo, Empty, File };
    Kind kind = Kind::Empty;
    std::string path;
    std::optional<int> items;
    std::optional<std::chrono::sys_days> date;
};

struct SqlStep {
    std::string statement;
};

struct ShowStep {
    std::string target;
};

struct AnswerStep {
    int answer = 0;
};

/// Arms the fault hook of the session's connection: a chosen call from now
/// raises a chosen error instead of reaching the database.
struct FailStep {
    enum class Kind { Statement, Update, BeginTrans, CommitTrans, RollbackTrans };
    Kind kind = Kind::Statement;
    std::string firstWords; // Statement: "" for any statement
    int nth = 1;
    std::int32_t number = 0;
    std::optional<std::string> description;
};

/// Starts the statements that the next `expect sql` checks.
struct MarkSqlStep {};

struct PointerStep {
    enum class Gesture { Click, DblClick, RightClick, Hover };
    Gesture gesture = Gesture::Click;
    ControlRef control;
    Spot spot;
    /// For a right click: the popup item to choose, "" to dismiss the popup;
    /// none when no popup menu is expected.
    std::optional<std::string> menuChoice;
};

struct TypeStep {
    std::string text;
};

struct PressStep {
    std::vector<forms::KeyStroke> keys;
};

struct ChooseStep {
    ControlRef control;
    std::string item;
};

struct CloseStep {
    std::string form; // empty: the active form
};

struct ExpectPropertyStep {
    ControlRef control; // a form's name when it names no control
    std::string property;
    std::string value;
};

struct ExpectCellStep {
    ControlRef control;
    int row = 0;
    int col = 0;
    std::string value;
};

struct ExpectControlRowsStep {
    ControlRef control;
    Rows rows;
};

struct ExpectFocusStep {
    std::optional<ControlRef> control; // none: no control has the focus
    bool negated = false;              // `expect focus not X`
};

/// A column of a grid (from 0) or a list (from 1): the parts the line names.
struct ExpectColumnStep {
    ControlRef control;
    int col = 0;
    std::optional<int> width;
    std::optional<int> alignment;
    std::optional<int> position;
};

struct ExpectPointerStep {
    int pointer = 0;
};

struct ExpectFormStep {
    enum class State { Shown, Active, Closed };
    State state = State::Shown;
    std::string form;
};

struct ExpectMsgBoxStep {
    std::string text;
    std::optional<int> style;
    std::optional<std::string> title;
    bool untitled = false; // the box gave no title of its own
};

struct ExpectRowsStep {
    std::string query;
    Rows rows;
};

/// What the forms sent out of the program: a text file shown in the viewer or
/// bytes sent to a printer port (compared with a file beside the scenario),
/// or a report preview (its report file and title).
struct ExpectOutputStep {
    enum class Kind { Viewer, Printer, Report };
    Kind kind = Kind::Viewer;
    std::string port;                 // Printer
    std::string file;                 // Viewer, Printer: the expected text; Report: the report file
    std::optional<std::string> title; // Report
};

/// The statements sent since the mark, letter for letter, in order.
struct ExpectSqlStep {
    std::vector<std::string> statements;
};

/// The error that the line before raised and no form handled.
struct ExpectErrorStep {
    std::int32_t number = 0;
    std::optional<std::string> description;
};

struct DumpStep {
    std::string form; // empty: the active form
};

using Action =
    std::variant<SetStep, DbStep, SqlStep, ShowStep, AnswerStep, FailStep, MarkSqlStep,
                 PointerStep, TypeStep, PressStep, ChooseStep, CloseStep, ExpectPropertyStep,
                 ExpectCellStep, ExpectControlRowsStep, ExpectColumnStep, ExpectFocusStep,
                 ExpectPointerStep, ExpectFormStep, ExpectMsgBoxStep, ExpectRowsStep,
                 ExpectOutputStep, ExpectSqlStep, ExpectErrorStep, DumpStep>;

struct Step {
    int line = 0;
    std::string source; // the line as written, blanks trimmed
    Action action;
};

/// A parsed scenario file.
struct Scenario {
    std::string fileName;          // as failures name it
    std::filesystem::path baseDir; // relative paths in the scenario start here
    std::vector<Step> steps;
    int lastLine = 0;
};

} // namespace script
