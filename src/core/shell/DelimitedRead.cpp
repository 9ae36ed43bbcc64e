#include "shell/DelimitedRead.h"

namespace zarvion::shell {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isLineEnd(std::string_view s, std::size_t i)
{
    return s[i] == '\n' || (s[i] == '\r' && i + 1 < s.size() && s[i + 1] == '\n');
}

//! Moves i past one delimiter (comma or line end) if it stands there.
void skipDelimiter(std::string_view s, std::size_t& i)
{
    if (i >= s.size()) {
        return;
    }
    if (s[i] == ',') {
        ++i;
    } else if (s[i] == '\r') {
        i += 2;
    } else if (s[i] == '\n') {
        ++i;
    }
}

} // namespace

std::vector<DelimitedField> ReadDelimited(std::string_view s)
{
    std::vector<DelimitedField> fields;
    std::size_t i = 0;
    bool afterComma = false; // a comma just ended a field: the next one exists even if empty
    while (i < s.size()) {
        while (i < s.size() && isBlank(s[i])) {
            ++i;
        }
        if (i >= s.size()) {
            if (afterComma) {
                fields.push_back({});
            }
            break;
        }
        if (!afterComma && isLineEnd(s, i)) {
            skipDelimiter(s, i); // an empty line gives no field
            continue;
        }
        DelimitedField field;
        if (s[i] == '"') {
            field.quoted = true;
            const std::size_t close = s.find('"', i + 1);
            const std::size_t end = close == std::string_view::npos ? s.size() : close;
            field.text = std::string(s.substr(i + 1, end - i - 1));
            i = close == std::string_view::npos ? s.size() : close + 1;
            while (i < s.size() && s[i] != ',' && !isLineEnd(s, i)) {
                ++i;
            }
        } else {
            const std::size_t start = i;
            while (i < s.size() && s[i] != ',' && !isLineEnd(s, i)) {
                ++i;
            }
            std::size_t end = i;
            while (end > start && (isBlank(s[end - 1]) || s[end - 1] == '\r')) {
                --end;
            }
            field.text = std::string(s.substr(start, end - start));
        }
        afterComma = i < s.size() && s[i] == ',';
        skipDelimiter(s, i);
        fields.push_back(std::move(field));
        if (afterComma && i >= s.size()) {
            fields.push_back({});
        }
    }
    return fields;
}

std::string WriteDelimited(const std::vector<DelimitedField>& fields)
{
    std::string out;
    for (std::size_t k = 0; k < fields.size(); ++k) {
        if (k > 0) {
            out += ',';
        }
        if (fields[k].quoted) {
            out += '"';
            out += fields[k].text;
            out += '"';
        } else {
            out += fields[k].text;
        }
    }
    return out;
}

} // namespace zarvion::shell
