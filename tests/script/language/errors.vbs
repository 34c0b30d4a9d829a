Dim n, s, d, i
' Resume Next goes on with the next statement, wherever that is.
On Error Resume Next
n = 1 / 0
Check Err.Number, 11
Check Err.Description, "Division by zero"
Check Err.Source, "Microsoft VBScript runtime error"
Err.Clear
Check Err.Number & Err.Description, "0"
n = "before" : n = CInt("x") : Check n, "before"
Check Err = 13, True
On Error Resume Next : Check Err.Number, 0
s = "" : If 1 / 0 Then s = "entered" Else s = "else"
Check s, "entered"
s = "" : Select Case 1 / 0 : Case 1 : s = "one" : Case Else : s = "else" : End Select
Check s, ""
s = "" : Select Case 1 : Case 1 / 0 : s = "entered" : End Select
Check s, "entered"
s = "" : For i = 1 / 0 To 3 : s = s & "body" : Next
Check s, "body"
Check Err.Number, 92
s = "" : For Each i In 5 : s = s & "body" : Next
Check s, "body"
s = "" : Do While 1 / 0 : s = s & "body" : Exit Do : Loop
Check s, "body"
s = "" : Do : s = s & "x" : Loop Until 1 / 0
Check s, "x"
If False Then
  s = "no"
ElseIf 1 / 0 Then
  s = "elseif"
End If
Check s, "elseif"
s = "a"
If True Then
  s = s & "b"
  s = s & 1 / 0
Else
  s = s & "c"
End If
Check s, "ab"
With Nothing
  s = "in with"
End With
Check s, "in with"
On Error GoTo 0

' Each procedure has its own; an error goes to the nearest caller that resumes.
Sub Fails : s = s & "1" : n = 1 / 0 : s = s & "2" : End Sub
Sub Catches : On Error Resume Next : Fails : s = s & "3" & Err.Number : End Sub
s = "" : Catches : Check s, "1311"
Sub Turns : On Error Resume Next : On Error GoTo 0 : n = 1 / 0 : s = "never" : End Sub
Check ErrorOf("Turns"), 11
Function Half : On Error Resume Next : Half = 1 : Half = 1 / 0 : End Function
Check Half, 1
Check Err.Number, 11

' Raise
On Error Resume Next
Err.Raise 5000, "source", "text", "help.hlp", 7
Check Err.Number & Err.Source & Err.Description & Err.HelpFile & Err.HelpContext, "5000sourcetexthelp.hlp7"
Err.Raise 9 : Check Err.Description, "Subscript out of range"
Err.Raise vbObjectError + 1, , "own" : Check Err.Number, -2147221503
Check Err.Description, "own"
Err.Raise 0 : Check Err.Number, 5
Err.Raise &H800A000D : Check Err.Number, 13
Err.Number = 3 : Err.Description = "set" : Check Err.Number & Err.Description, "3set"
Err.Raise 45000 : Check Err.Description, "Unknown runtime error"
Err.Clear
On Error GoTo 0
Check ErrorOf("y = CByte(256)"), 6
Check ErrorOf("y = CInt(Null)"), 94
Check ErrorOf("Set d = CreateObject(""No.Such"")"), 429
Check ErrorOf("Option Explicit: y = neverDeclared"), 500
Check ErrorOf("Option Explicit: neverDeclared = 1"), 500
Check ErrorOf("Option Explicit: ReDim r(2): r(0) = 1"), 0

' Nothing recurses out of the process.
Sub Forever : Forever : End Sub
Check ErrorOf("Forever"), 28
Function ForeverExecuted : Execute "ForeverExecuted" : End Function
Check ErrorOf("ForeverExecuted"), 28
Class Endless
  Public Default Property Get Item : Item = Me + 1 : End Property
End Class
Set d = New Endless
Check ErrorOf("y = d + 1"), 28
Class Born
  Private Sub Class_Initialize : Dim other : Set other = New Born : End Sub
End Class
Check ErrorOf("Set y = New Born"), 28
Check ErrorOf("y = " & String(100000, "(") & "1"), 1001
Check ErrorOf("y = " & String(100000, "-") & "1"), 1001
Check ErrorOf(Replace(String(100000, "x"), "x", "If 1 Then ") & "y = 1"), 1001
Check ErrorOf(Replace(String(100000, "x"), "x", "Do" & vbLf)), 1001
Check ErrorOf("y = " & String(300, "(") & "1" & String(300, ")")), 0
Check ErrorOf("y = 1" & Replace(String(100000, "x"), "x", "+1")), 0
