// script::LineParser: reads the words of one scenario line into the parts of a step.
#pragma once

#include "hosts/script/Step.h"
#include "hosts/script/Token.h"

#include <string>
#include <string_view>
#include <vector>

namespace script {

/// The tokens of one line with a cursor. Each reader takes what it needs
/// from the cursor on and raises BadScript, with the line number, when the
/// line does not have it.
class LineParser {
public:
    LineParser(std::string_view text, int line, std::vector<Token> tokens);

    /// The next bare word, in lower case (commands and keywords).
    std::string keyword();
    /// Takes the next token when it is the bare word `word` (any letter case).
    bool atKeyword(std::string_view word);
    /// The next token, bare or quoted.
    std::string word(std::string_view what);
    std::string value(std::string_view what) { return word(what); }
    int number(std::string_view what);
    /// Everything from the next token to the end of the line, as written.
    std::string restOfLine(std::string_view what);
    /// The next token, or "" at the end of the line.
    std::string optionalName();
    ControlRef control();
    /// A control, with ".Property" after it or not; property() tells which.
    ControlRef controlWithProperty();
    const std::string &property() const { return property_; }
    /// Raises unless every token has been read.
    void end();
    [[noreturn]] void fail(const std::string &message) const;

    SetStep setStep();
    DbStep dbStep();
    AnswerStep answerStep();
    FailStep failStep();
    ExpectErrorStep expectErrorStep();
    ExpectColumnStep expectColumnStep(ControlRef control);
    PointerStep pointerStep(const std::string &gesture);
    PressStep pressStep();
    ExpectMsgBoxStep expectMsgBoxStep();
    ExpectFocusStep expectFocusStep();
    ExpectPointerStep expectPointerStep();
    ExpectFormStep expectFormStep(ExpectFormStep::State state);
    ExpectOutputStep expectOutputStep(ExpectOutputStep::Kind kind);

    /// The values of one row of a block: split at tabs when the line has one,
    /// else at "|"; blanks around each value dropped; "" stands for an empty text.
    static std::vector<std::string> blockCells(std::string_view text);

private:
    const Token &take(std::string_view what);
    bool atQuoted() const { return !atEnd() && tokens_[next_].quoted; }
    bool atEnd() const { return next_ >= tokens_.size(); }
    ControlRef parseControl(std::string_view text) const;
    Spot spot(const std::string &gesture);
    vb::Date date(std::string_view what);
    vb::Date dateTime(std::string_view what);

    std::string_view text_;
    int line_;
    std::vector<Token> tokens_;
    std::size_t next_ = 0;
    std::string property_;
};

} // namespace script
