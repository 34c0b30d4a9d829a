Dim x, y, i, j, s
' If
If True Then x = 1 Else x = 2
Check x, 1
If False Then x = 1 : y = 1 Else x = 2 : y = 3
Check x & y, "23"
If Null Then x = 1 Else x = "null is not true"
Check x, "null is not true"
If "true" Then If 0 Then x = 1 Else x = "inner"
Check x, "inner"
If False Then
  x = 1
ElseIf 2 > 3 Then
  x = 2
ElseIf 3 Then
  x = 3
Else
  x = 4
End If
Check x, 3
If False Then x = 1 Else If True Then x = "chained"
Check x, "chained"
If True Then x = "closed" End If
Check x, "closed"
Check ErrorOf("If ""maybe"" Then x = 1"), 13

' Select
Function Kind(v)
  Select Case v
    Case 1, 2
      Kind = "low"
    Case "3": Kind = "text"
    Case v > 100
      Kind = "never"
    Case Else Kind = "else"
  End Select
End Function
Check Kind(2), "low"
Check Kind("3"), "text"
Check Kind(3), "text"
Check Kind(200), "else"
Check Kind(Null), "else"
Select Case 5
End Select

' For
s = "" : For i = 1 To 3 : s = s & i : Next
Check s & "," & i, "123,4"
s = "" : For i = 3 To 1 Step -1 : s = s & i : Next
Check s & "," & i, "321,0"
s = "" : For i = 1 To 2 Step 0.5 : s = s & i & ";" : Next
Check s, "1;1.5;2;"
For i = 5 To 1 : s = "never" : Next
Check i, 5
For i = 32766 To 32768 : Next
Check i, CLng(32769)
x = 3 : s = "" : For i = 1 To x : x = 1 : s = s & i : Next
Check s, "123"
s = ""
For i = 1 To 3
  For j = 1 To 3
    If j = 2 Then Exit For
    s = s & i & j & " "
  Next
Next
Check s, "11 21 31 "
Check ErrorOf("For i = Null To 3: Next"), 94
Check ErrorOf("For i = 1 To ""a"": Next"), 13

' For Each
s = "" : For Each x In Array(1, "b", Array(3)) : s = s & TypeName(x) : Next
Check s, "IntegerStringVariant()"
Dim grid(1, 2)
For i = 0 To 1 : For j = 0 To 2 : grid(i, j) = i & j : Next : Next
s = "" : For Each x In grid : s = s & x & " " : Next
Check s, "00 10 01 11 02 12 "
s = "" : For Each x In Array() : s = "never" : Next
Check s, ""
s = Array(1, 2, 3) : y = ""
For Each x In s
  s(2) = 9
  y = y & x
Next
Check y, "129"
Check ErrorOf("Dim d(): ReDim d(2): For Each e In d: ReDim d(3): Next"), 10
Check ErrorOf("For Each e In 5: Next"), 451
Check ErrorOf("For Each e In Nothing: Next"), 91

' Do and While
x = 0 : Do While x < 3 : x = x + 1 : Loop
Check x, 3
Do Until x = 5 : x = x + 1 : Loop
Check x, 5
Do : x = x + 1 : Loop While x < 5
Check x, 6
Do : x = x + 1 : Loop Until x >= 8
Check x, 8
Do
  x = x + 1
  If x > 10 Then Exit Do
Loop
Check x, 11
While x < 13 : x = x + 1 : Wend
Check x, 13
Do While Null : x = "never" : Loop
Check x, 13

' With
Class Box
  Public Name, Inner
End Class
Dim b
Set b = New Box
Set b.Inner = New Box
With b
  .Name = "outer"
  With .Inner
    .Name = "inner"
    s = .Name
  End With
  Join2 .Name, .Inner.Name
End With
Sub Join2(p, q) : s = s & "," & p & "," & q : End Sub
Check s, "inner,outer,inner"
Check ErrorOf("With 5: End With"), 424
Check ErrorOf("x = .Name"), 505
