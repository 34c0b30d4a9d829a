Dim log, a, b, c, i
Class Account
  Public Owner
  Private balance_
  Dim tags(2)
  Private Sub Class_Initialize
    balance_ = 10
    tags(0) = "t"
  End Sub
  Private Sub Class_Terminate
    log = log & "-" & Owner
  End Sub
  Public Property Get Balance : Balance = balance_ : End Property
  Public Property Let Balance(amount)
    If amount < 0 Then Err.Raise 5000, "Account", "Too low"
    balance_ = amount
  End Property
  Public Default Property Get Entry(i) : Entry = Owner & i : End Property
  Public Property Let Entry(i, text) : Owner = text & i : End Property
  Public Property Set Partner(other) : Set partner_ = other : End Property
  Public Property Get Partner : Set Partner = partner_ : End Property
  Private partner_
  Public Function Deposit(amount)
    balance_ = balance_ + amount
    Deposit = Total(1)
  End Function
  Private Function Total(factor) : Total = Me.Balance * factor : End Function
  Public Sub Give(other, amount) : other.Balance = other.Balance + amount : Balance = Balance - amount : End Sub
  Public Sub Bump(ByRef x) : x = x + 1 : End Sub
  Public Sub BumpOwn : Bump balance_ : End Sub
  Public Function Tag(i) : Tag = tags(i) : End Function
  Public Function Peek(other) : Peek = other.Secret : End Function
  Private Property Get Secret : Secret = "secret" : End Property
End Class

Set a = New Account
a.Owner = "Ann"
Check a.Owner & a.Balance, "Ann10"
a.Balance = 20
Check a.Deposit(5), 25
Check a(7), "Ann7"
a(3) = "Amy"
Check a.Owner, "Amy3"
a.Entry(4) = "Ada"
Check a.Entry(""), "Ada4"
Check a.Tag(0), "t"
a.tags(1) = "set"
Check a.Tag(1) & a.tags(1), "setset"
Set b = New Account : b.Owner = "Bob"
a.Give b, 5
Check a.Balance & "," & b.Balance, "20,15"
a.BumpOwn
Check a.Balance, 21
i = 1 : a.Bump i : Check i, 2
Set a.Partner = b
Check a.Partner.Owner, "Bob"
Check a.Partner Is b, True
Check a.Peek(b), "secret"
Check TypeName(a) & IsObject(a), "AccountTrue"

Check ErrorOf("a.Balance = -1"), 5000
Check ErrorIn("a.Secret"), 438
Check ErrorIn("a.Missing"), 438
Check ErrorOf("a.Missing = 1"), 438
Check ErrorOf("a.Deposit = 1"), 450
Check ErrorIn("a.Deposit"), 450
Check ErrorOf("Set a.Balance = b"), 438
Check ErrorOf("Set x = 5"), 424
Check ErrorOf("x = 5: x.y = 1"), 424
Check ErrorOf("Set x = Nothing: x.y = 1"), 91
Set x = New Plain: Check x.Item, Empty
Check TypeName(New RegExp), "IRegExp2"
Check ErrorOf("Set x = New Nobody"), 506
Check ErrorOf("x = a"), 450
Check ErrorOf("Set x = New Plain: y = x"), 438
Check ErrorOf("For Each x In a: Next"), 451
Class Plain
  Public Item
End Class

' An object ends with its last reference, in order.
log = "" : Set a.Partner = Nothing : Set b = Nothing : Check log, "-Bob"
log = "" : Set a = Nothing : Check log, "-Ada4"
Sub Local1 : Dim x : Set x = New Account : x.Owner = "local" : log = log & "in" : End Sub
log = "" : Local1 : Check log, "in-local"
log = "" : Set a = New Account : a.Owner = "old" : Set a = New Account : Check log, "-old"
log = "" : a.Owner = "arr" : c = Array(a) : Set a = Nothing : Check log, ""
c = 0 : Check log, "-arr"
Class Failing
  Private Sub Class_Terminate : Err.Raise 1 : End Sub
End Class
Set a = New Failing : Set a = Nothing : Check IsEmpty(Err.Number), False

' Default members stand in for their object.
Class Number
  Private value_
  Public Default Property Get Value : Value = value_ : End Property
  Public Property Let Value(v) : value_ = v : End Property
End Class
Set a = New Number : a.Value = 4
Check a + 1, 5
Check a & "", "4"
Check a = 4, True
Check Len(a), 1
b = a : Check TypeName(b), "Integer"
For i = a To a : Next
Check i, 5
Select Case a : Case 4 : b = "four" : End Select
Check b, "four"
If a Then b = "true"
Check b, "true"

' A list of 200,000 linked objects ends without deep recursion.
Class Node : Public Successor
End Class
Set a = Nothing
For i = 1 To 200000
  Set b = New Node : Set b.Successor = a : Set a = b
Next
Set a = Nothing : Set b = Nothing
Check a Is Nothing, True

' Objects that hold each other end with the engine.
Set a = New Node : Set b = New Node
Set a.Successor = b : Set b.Successor = a
