#include "Help.h"

#include "shell/Installation.h"
#include "storage/Bytes.h"
#include "storage/RecordFile.h"

namespace scorvane {

std::string helpDirectory(const std::string& installDirectory) {
    return findHelpDirectory(installDirectory);
}

std::string helpPagePath(const std::string& installDirectory, int topic) {
    return helpDirectory(installDirectory) + "topic" + digits(topic) + ".html";
}

Message helpErrorMessage() {
    return {"Unable to display help.  This is because the program is installed to a network "
            "folder and your temporary windows folder is also a network folder.  You may "
            "download the printable help file from our website instead.",
            "Help Error", Buttons::Ok, Icon::Warning, Answer::Ok};
}

std::string findHelpPage(Prompter& prompter, const std::string& installDirectory, int topic) {
    const std::string page = helpPagePath(installDirectory, topic);
    if (fileExists(page))
        return page;
    prompter.ask(helpErrorMessage());
    return {};
}

} // namespace scorvane
