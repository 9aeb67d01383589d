// A terminal for the host's tests: scripted input bytes, every frame kept as text.
#pragma once

#include "hosts/tui/Canvas.h"
#include "hosts/tui/SessionEnded.h"
#include "hosts/tui/Terminal.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace tui::test {

/// Input comes in chunks, each one what a single read returns. A chunk typed
/// with `type` is there at once (the bytes arrived together, as a scanner's
/// do); one typed with `typeLater` only comes once the host has drawn and
/// waits (the user reacts to what is on the screen). When the script runs
/// out the session ends, as it does when a terminal's input ends, so a test
/// can never hang.
class ScriptedTerminal : public Terminal {
public:
    ScriptedTerminal(int cols, int rows) : size_{cols, rows} {}

    void type(std::string bytes) { chunks_.push_back({std::move(bytes), false}); }
    void typeLater(std::string bytes) { chunks_.push_back({std::move(bytes), true}); }
    /// Once the host has drawn and waits, the terminal takes a new size (and
    /// the read returns nothing, as a real one does on a resize).
    void resizeLater(int cols, int rows) {
        chunks_.push_back({{}, true, TerminalSize{cols, rows}});
    }

    TerminalSize size() const override { return size_; }
    /// Reads keys as a terminal with these sequences would send them.
    void useKeyTable(KeyTable table) { table_ = std::move(table); }
    const KeyTable &keyTable() const override { return table_; }
    void cannotReportCtrlEnter() { ctrlEnter_ = false; }
    bool reportsCtrlEnter() const override { return ctrlEnter_; }
    void resize(int cols, int rows) { size_ = {cols, rows}; }

    void present(const Canvas &canvas) override {
        frames_.push_back(canvas.dump());
        cursor_ = canvas.cursor();
    }

    std::string read(std::optional<std::chrono::milliseconds> timeout) override {
        ++reads_;
        if (!chunks_.empty() && (!chunks_.front().afterDraw || !timeout)) {
            if (chunks_.front().afterDraw && !frames_.empty()) {
                waitFrames_.push_back(frames_.back());
                framesAtWait_.push_back(frames_.size());
            }
            std::string bytes = std::move(chunks_.front().bytes);
            if (chunks_.front().resize) {
                size_ = *chunks_.front().resize;
            }
            chunks_.pop_front();
            return bytes;
        }
        if (timeout) {
            return {};
        }
        throw SessionEnded("the test script has no more input", 1);
    }

    const std::vector<std::string> &frames() const { return frames_; }
    /// The frame the user saw before each chunk typed with `typeLater`.
    const std::vector<std::string> &waitFrames() const { return waitFrames_; }
    /// How many frames had been drawn at each of those waits.
    const std::vector<std::size_t> &framesAtWait() const { return framesAtWait_; }
    const std::string &lastFrame() const { return frames_.back(); }
    std::optional<Point> cursor() const { return cursor_; }
    std::size_t pendingChunks() const { return chunks_.size(); }
    /// The frames that show `text` somewhere.
    std::vector<std::string> framesShowing(const std::string &text) const {
        std::vector<std::string> out;
        for (const auto &f : frames_) {
            if (f.find(text) != std::string::npos) {
                out.push_back(f);
            }
        }
        return out;
    }

private:
    KeyTable table_;
    bool ctrlEnter_ = true;
    struct Chunk {
        std::string bytes;
        bool afterDraw;
        std::optional<TerminalSize> resize = std::nullopt;
    };
    TerminalSize size_;
    std::deque<Chunk> chunks_;
    std::vector<std::string> frames_;
    std::vector<std::string> waitFrames_;
    std::vector<std::size_t> framesAtWait_;
    std::optional<Point> cursor_;
    int reads_ = 0;
};

} // namespace tui::test
