Option Explicit
Dim [a b], [select], x
Check &HFF, 255
Check &hFFFF, -1
Check &HFFFF&, CLng(65535)
Check &H10000, CLng(65536)
Check &HFFFFFFFF, CLng(-1)
Check &O17, 15
Check &17, 15
Check 1E3, 1000.0
Check 1.5e-2, 0.015
Check .5, 0.5
Check 5., 5.0
Check 32767, 32767
Check TypeName(32768), "Long"
Check TypeName(2147483648), "Double"
Check #2024-02-29#, #2/29/2024#
Check #13:30#, TimeSerial(13, 30, 0)
Check TypeName(#1/2/2003#), "Date"
[a b] = 1 : [select] = 2
Check [A B] + [SELECT], 3
x = 1 + _
    2 ' and a comment behind
Check x, 3
x = "a' not a comment" : Rem but this is one : x = 2
Check x, "a' not a comment"
Check x _
  & "!", "a' not a comment!"

Check ErrorOf("y = 1e"), 1031
Check ErrorOf("y = &HFFFFFFFFF"), 1031
Check ErrorOf("y = ""open"), 1033
Check ErrorOf("y = 1 ? 2"), 1032
Check ErrorOf("y = [open"), 1007
Check ErrorOf("y = #what#"), 1002
Check ErrorOf("y = 1abc"), 1025
Check ErrorOf(String(256, "y") & " = 1"), 1030
Check ErrorOf(String(255, "y") & " = 1"), 0
' & behind an operand joins texts, whatever follows it
Dim hello, beef
hello = 1: beef = "b"
Check "a"&hello, "a1"
Check beef&hello&1&beef, "b11b"
Check ("x")&beef&&HFF, "xb255"
Check Hex(&HFF)&hello, "FF1"
