// The tokenizer of the SQL Server dialect that the module sends.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ado::sql {

/// One piece of statement text. `text` points into the statement, which must
/// outlive the tokens; joining the texts of all tokens gives the statement back.
struct Token {
    enum class Kind {
        Word,     // a bare name or keyword: select, svhid, isnull
        Quoted,   // a delimited name: [svh id] or "svh id"
        String,   // a string literal, with its quotes: 'abc', N'abc'
        Number,   // 12, 1.5, .5, 1e3
        Variable, // @name, @@name
        Symbol,   // ( ) , . ; and the operators, <> <= >= != !< !> as one token
        Space,    // blanks, tabs and line ends
        Comment,  // -- to the end of the line, or /* ... */
    };
    Kind kind;
    std::string_view text;

    /// A token that carries meaning (no blank, no comment).
    bool significant() const { return kind != Kind::Space && kind != Kind::Comment; }
    /// A Word that equals `word` ignoring letter case.
    bool isWord(std::string_view word) const;
    bool isSymbol(std::string_view symbol) const { return kind == Kind::Symbol && text == symbol; }
    /// The name a Word or Quoted token stands for, without its delimiters
    /// (a doubled closing delimiter inside stands for one).
    std::string name() const;
    /// The content of a String token: quotes removed, doubled quotes made single.
    std::string stringValue() const;
};

/// Splits statement text into tokens. An unclosed string literal, delimited
/// name or comment raises -2147217900 with SQL Server's text.
std::vector<Token> tokenize(std::string_view text);

} // namespace ado::sql
