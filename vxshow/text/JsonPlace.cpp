#include "vxshow/text/JsonPlace.h"

#include "vxshow/text/Quoting.h"

#include <algorithm>
#include <vector>

namespace vxshow::text {

namespace {

// A document with a mistake is a level or two too deep. The limit keeps a file full of brackets
// from exhausting the memory.
constexpr std::size_t deepest = 64;

/// What can come next.
enum class Next { root, value, valueOrEnd, name, nameOrEnd, colon, commaOrEnd, nothing };

/// A walk over the tokens of a document that checks each against the grammar.
class Walk {
public:
    Walk(std::string_view document, JsonRoot root) : document_(document), root_(root) { toToken(); }

    /// The current position: the start of a token, or the end of the document.
    std::size_t position() const { return position_; }

    /// Where the current token ends.
    std::size_t tokenEnd() const {
        return atEnd() ? position_ : position_ + tokenAt(document_, position_).size();
    }

    /// What stopped the walk, unless it was the end of the document.
    std::optional<SyntaxError> const & error() const { return error_; }

    /// Advances by one token; false at the end of the document and at an error.
    bool step() {
        if (atEnd()) {
            if (next_ != Next::nothing) {
                refuse(expected());
            }
            return false;
        }
        auto const token = tokenAt(document_, position_);
        take(token);
        if (error_) {
            return false;
        }
        position_ += token.size();
        toToken();
        return true;
    }

    std::string members() const {
        std::string path;
        for (Level const & level : levels_) {
            if (&level == &levels_.back() && !insideMember()) {
                break;
            }
            if (!level.object) {
                path.append("[").append(std::to_string(level.index)).append("]");
                continue;
            }
            path.append(path.empty() ? "" : ".").append(shownMember(level.name));
        }
        return path;
    }

private:
    struct Level {
        bool object;
        std::string_view name; ///< of the last member, without its quotes
        std::size_t index;     ///< of the last element
    };

    bool atEnd() const { return position_ == document_.size(); }

    void toToken() { position_ = pastBlanks(document_, position_); }

    bool insideMember() const {
        return next_ == Next::colon || next_ == Next::value || next_ == Next::valueOrEnd;
    }

    bool valueMayCome() const { return next_ == Next::value || next_ == Next::valueOrEnd; }

    bool isRoot(JsonRoot root) const { return next_ == Next::root && root_ == root; }

    bool nameMayCome() const { return next_ == Next::name || next_ == Next::nameOrEnd; }

    bool endMayCome(bool object) const {
        return !levels_.empty() && levels_.back().object == object &&
               (next_ == Next::commaOrEnd ||
                next_ == (object ? Next::nameOrEnd : Next::valueOrEnd));
    }

    void take(std::string_view token) {
        switch (token[0]) {
        case '{':
            return valueMayCome() || isRoot(JsonRoot::object) ? open(true) : refuse(expected());
        case '[':
            return valueMayCome() || isRoot(JsonRoot::array) ? open(false) : refuse(expected());
        case '}':
        case ']':
            return endMayCome(token[0] == '}') ? close() : refuse(expected());
        case ',':
            return next_ == Next::commaOrEnd ? goOn() : refuse(expected());
        case ':':
            return next_ == Next::colon ? expect(Next::value) : refuse(expected());
        case '"':
            return takeString(token);
        default:
            return valueMayCome() && isPlainValue(token) ? valueEnds() : refuse(expected());
        }
    }

    void takeString(std::string_view token) {
        if (!nameMayCome() && !valueMayCome()) {
            return refuse(expected());
        }
        if (auto const error = stringError(document_, position_)) {
            error_ = error;
            return;
        }
        if (valueMayCome()) {
            return valueEnds();
        }
        levels_.back().name = stringContent(token);
        next_ = Next::colon;
    }

    void open(bool object) {
        if (levels_.size() == deepest) {
            return refuse("at most " + std::to_string(deepest) + " levels");
        }
        levels_.push_back({object, {}, 0});
        next_ = object ? Next::nameOrEnd : Next::valueOrEnd;
    }

    void close() {
        levels_.pop_back();
        valueEnds();
    }

    void goOn() {
        ++levels_.back().index;
        next_ = levels_.back().object ? Next::name : Next::value;
    }

    void valueEnds() { next_ = levels_.empty() ? Next::nothing : Next::commaOrEnd; }

    void expect(Next next) { next_ = next; }

    void refuse(std::string expected) {
        error_ = SyntaxError{position_, shownToken(document_, position_), std::move(expected)};
    }

    std::string expected() const {
        switch (next_) {
        case Next::root:
            return root_ == JsonRoot::object ? "an object" : "an array";
        case Next::value:
            return "a value";
        case Next::valueOrEnd:
            return "a value or ']'";
        case Next::name:
            return "the name of a member";
        case Next::nameOrEnd:
            return "the name of a member or '}'";
        case Next::colon:
            return "':'";
        case Next::commaOrEnd:
            return levels_.back().object ? "',' or '}'" : "',' or ']'";
        case Next::nothing:
            break;
        }
        return "the end of the file";
    }

    std::string_view document_;
    JsonRoot root_;
    std::size_t position_ = 0;
    Next next_ = Next::root;
    std::vector<Level> levels_;
    std::optional<SyntaxError> error_;
};

} // namespace

Place placeOf(std::string_view document, std::size_t position, JsonRoot root,
              EachToken const & eachToken) {
    Walk walk(document, root);
    while (walk.tokenEnd() <= position && walk.step()) {
        if (eachToken) {
            eachToken();
        }
    }
    auto const before = document.substr(0, position);
    auto const lineBreak = before.rfind('\n');
    auto const lineStart = lineBreak == std::string_view::npos ? 0 : lineBreak + 1;
    auto const line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
    return {line, position - lineStart + 1, walk.members()};
}

std::optional<SyntaxError> firstSyntaxError(std::string_view document, JsonRoot root,
                                            EachToken const & eachToken) {
    Walk walk(document, root);
    while (walk.step()) {
        if (eachToken) {
            eachToken();
        }
    }
    return walk.error();
}

} // namespace vxshow::text
