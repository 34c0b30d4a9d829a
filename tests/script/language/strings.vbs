' Joining and text forms; what only looks like appending.
Dim s, t, i, n, o
Check "a" & "b", "ab"
Check 1 & 2, "12"
Check 1.5 & True, "1.5True"
Check Null & "a", "a"
Check "a" & Null, "a"
Check Null & Null, Null
Check Empty & Empty, ""
Check "a""b", "a" & Chr(34) & "b"
Check "" & #1/31/2024 2:05:09 PM#, "1/31/2024 2:05:09 PM"
Check "" & CCur(-12.5), "-12.5"
Check ErrorIn("""a"" & Array(1)"), 13

s = "x"
t = s
s = s & "y" & 1
Check s, "xy1"
Check t, "x"
s = s & s & s
Check s, "xy1xy1xy1"
s = "a": s = s & Tail("b")
Check s, "ab"
Check t, "inside"
Function Tail(text)
  s = "changed"
  t = "inside"
  Tail = text
End Function
s = Null: s = s & Null: Check s, Null
s = 5: s = s & 6: Check s, "56"
s = "a": s = s & 1 + 1 & "b" = "a2b": Check s, True
On Error Resume Next
s = "kept": s = s & 1 / 0
On Error GoTo 0
Check s, "kept"

' UTF-16 units count; two halves of a pair join.
s = ChrW(&HD83D)
s = s & ChrW(&HDE00)
Check s, ChrW(&HD83D) & ChrW(&HDE00)
Check Len(s), 2

' A text beyond the limit is error 7.
On Error Resume Next
t = String(16777216, "x")
For i = 1 To 5: t = t & t: Next
n = Err.Number
On Error GoTo 0
Check n, 7
