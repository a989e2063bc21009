#include "labels.h"

#include "section_texts.h"
#include "toolbox/messages.h"

CString labels(SectionKeys& keys, const RWCString& text, const std::vector<Section>& sections) {
    for (const toolbox::TemplateProblem& problem : keys.checkTemplate(text))
        GMSG::errorMsg(kBadToken, MB_ICONEXCLAMATION, problem.position + 1, problem.word);
    CString lines;
    for (const Section& section : sections) {
        keys.setCurrent(section);
        lines += "  " + keys.getParseString(text, 1) + "\n";
    }
    return lines;
}

CString legend(SectionKeys& keys) {
    StringFormat column;
    column.setFormat(11, Left);
    CString lines;
    for (int more = keys.setFirstSelection(); more; more = keys.setNextSelection()) {
        const UDKeyData data = keys.getKeyData(keys.getSelectionId());
        lines += "  " + column.getString("$" + data.getKeyStr() + "$") + data.getDescStr();
        if (!data.getUnitsStr().empty()) lines += ", " + data.getUnitsStr();
        lines += "\n";
    }
    return lines;
}
