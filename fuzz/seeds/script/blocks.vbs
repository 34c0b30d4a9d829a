For i = 1 To 10 Step 2: For Each x In Array(1, , 3): If x Then Exit For Else x = 1
Next: Next
Do Until a = b: Loop While
Select Case x
Case 1, 2: y = 3
Case Else
End Select
With o: .a.b(1)(2) = .c: End With
