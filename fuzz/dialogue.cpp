#include "FuzzTarget.h"
#include "xsheet/DialogueText.h"
#include "xsheet/MouthChart.h"

// What has been read is written so that it is read again as it was, and any chart has a mouth for each frame.
void velmor::fuzz::Read(Bytes input) {
    const std::string text(input.begin(), input.end());
    CMouthChart chart;
    static_cast<void>(CMouthChart::Parse(text, chart));
    CDialogue dialogue;
    if (!ReadDialogueText(text, 0, 23, dialogue))
        return;
    CDialogue again;
    Require(static_cast<bool>(ReadDialogueText(WriteDialogueText(dialogue), 0, 23, again)) || dialogue.IsEmpty());
    Require(again == dialogue);
    Require(MouthsOf(dialogue, chart, 0, 99, 2).size() == 100);
}
