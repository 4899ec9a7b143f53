#include "shell/mot_csv.h"

std::string mot_csv(std::string_view texte) {
    if (texte.find_first_of(",\"\r\n") == std::string_view::npos) return std::string(texte);
    std::string t = "\"";
    for (const char c : texte) t += c == '"' ? "\"\"" : std::string(1, c);
    return t + "\"";
}
