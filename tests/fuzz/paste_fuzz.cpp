// libFuzzer entry: any bytes as "Paste.tmp" behind the clipboard marker, pasted with Ctrl+V
// into the demo score.

#include <cstddef>
#include <cstdint>

#include "edit/key_codes.h"
#include "fuzz_support.h"

namespace {
constexpr const char* kScore = "\"Sv5\"\r\n\"x\"\r\n       G\r\nTEMPO 60\r\nRHYTM4/4\r\n03 -1\r\n13  8\r\n23  8\r\n";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace tahrir;
    fuzz::ByteReader in(data, size);
    fuzz::WriteScratch("Paste.tmp", in.rest());
    fuzz::ByteReader none(nullptr, 0);
    fuzz::EditorRig rig(kScore, none);
    rig.clipboard.setText("Srv5 Paste Data");
    rig.editor->keyPress('V', 2);
    if (rig.doc.Sheet.LastLine < 0 || rig.doc.Sheet.LastLine > core::MaxLines) __builtin_trap();
    return 0;
}
