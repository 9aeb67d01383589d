#include "hosts/script/Run.h"

#include "hosts/script/Failure.h"
#include "hosts/script/ShowTarget.h"

#include "module/records/DatabaseFile.h"

#include "ado/Session.h"

#include "vb/Clock.h"

#include <string>

namespace script {

void Run::apply(const SetStep &step) {
    if (step.field == SessionField::Clock) {
        // The clock may move while forms are open: time passes in a scenario too.
        session_.clock = step.date;
        vb::setClock(step.date);
        return;
    }
    if (step.field == SessionField::Watchdog) {
        ui_.setWatchdog(static_cast<std::size_t>(step.number));
        return;
    }
    requireNoForms("session values");
    switch (step.field) {
    case SessionField::Connection:
        openConnection(step.text);
        break;
    case SessionField::Company:
        session_.companyId = step.number;
        break;
    case SessionField::User:
        session_.userId = step.number;
        break;
    case SessionField::Godown:
        session_.godownId = step.number;
        break;
    case SessionField::Interface:
        session_.interfaceId = step.number;
        break;
    case SessionField::ProcessDate:
        session_.processDate = step.date;
        processDateSet_ = true;
        break;
    case SessionField::Title:
        session_.messageTitle = step.text;
        break;
    case SessionField::Home:
        session_.homeDir = scenario_.baseDir / step.text;
        break;
    case SessionField::Clock:
    case SessionField::Watchdog:
        break;
    }
}

void Run::openConnection(const std::string &connectionString) {
    ado::Connection connection;
    connection.Open(connectionString);
    // `expect sql` checks what the forms send from here on.
    connection.recordStatements(true);
    connection_ = connection;
    session_.connectionString = connectionString;
}

void Run::apply(const DbStep &step) {
    requireNoForms("the database");
    std::filesystem::path path;
    if (!options_.server.empty()) {
        if (step.kind == DbStep::Kind::File)
            throw Failure(current_->source, "db demo or db empty on the server",
                          "db " + step.path + ", a database file");
        std::optional<records::DemoOptions> demo;
        if (step.kind == DbStep::Kind::Demo) {
            demo.emplace();
            demo->items = step.items.value_or(demo->items);
            demo->date = step.date.value_or(demo->date);
        }
        serverDatabases_.push_back(
            std::make_unique<records::ScratchServerDatabase>(options_.server, demo));
        openConnection(serverDatabases_.back()->uri());
        return;
    }
    if (step.kind == DbStep::Kind::File) {
        path = scenario_.baseDir / step.path;
    } else {
        records::DatabaseFileOptions options;
        if (step.kind == DbStep::Kind::Demo) {
            records::DemoOptions demo;
            demo.items = step.items.value_or(demo.items);
            demo.date = step.date.value_or(demo.date);
            options.demo = demo;
        }
        path = scratch_.newPath(step.kind == DbStep::Kind::Demo ? "demo" : "empty", ".db");
        records::createDatabaseFile(path, options);
    }
    openConnection("sqlite:" + path.string());
}

void Run::apply(const SqlStep &step) {
    ado::Session::Unobserved scenarioOwn(connection_.session());
    connection_.Execute(step.statement);
}

void Run::apply(const ShowStep &step) {
    requireBoxesChecked();
    if (!screen_.shownForms().empty()) {
        throw Failure("show " + step.target + " while forms are open", "no form open",
                      "open: " + shownFormNames());
    }
    Session session = session_;
    if (!processDateSet_) {
        session.processDate = vb::Today();
    }
    // Message boxes that name no title carry the application's, which a host
    // sets from the session's title.
    if (!session.messageTitle.empty()) {
        screen_.setAppTitle(session.messageTitle);
    }
    const ShowContext context{session, connection_, screen_, scratch_.folder(), kept_};
    options_.targets.at(step.target)(context);
}

void Run::apply(const AnswerStep &step) {
    ui_.queueAnswer(step.answer, current_->line);
}

} // namespace script

namespace script {

void Run::apply(const FailStep &step) {
    vb::Error error(step.number, "stockverify script",
                    step.description.value_or("Fault made by line " +
                                              std::to_string(current_->line) + " of the scenario"));
    switch (step.kind) {
    case FailStep::Kind::Statement:
        connection_.failStatement(step.nth, step.firstWords, std::move(error));
        break;
    case FailStep::Kind::Update:
        connection_.failNthCall(step.nth, std::move(error), ado::Operation::Update);
        break;
    case FailStep::Kind::BeginTrans:
        connection_.failNthCall(step.nth, std::move(error), ado::Operation::BeginTrans);
        break;
    case FailStep::Kind::CommitTrans:
        connection_.failNthCall(step.nth, std::move(error), ado::Operation::CommitTrans);
        break;
    case FailStep::Kind::RollbackTrans:
        connection_.failNthCall(step.nth, std::move(error), ado::Operation::RollbackTrans);
        break;
    }
    failLines_.push_back(current_->line);
}

void Run::apply(const MarkSqlStep &) {
    connection_.takeStatements();
}

} // namespace script
