' What a pattern finds first: place, text and groups
Function Find(pattern, text, options)
  Dim re, matches, part, found
  Set re = CreateObject("VBScript.RegExp")
  re.Pattern = pattern
  re.IgnoreCase = InStr(options, "i") > 0
  re.MultiLine = InStr(options, "m") > 0
  Set matches = re.Execute(text)
  If matches.Count = 0 Then Find = "none" : Exit Function
  found = matches(0).FirstIndex & ":" & matches(0)
  For Each part In matches(0).SubMatches
    If IsEmpty(part) Then found = found & "|-" Else found = found & "|" & part
  Next
  Find = found
End Function

Check Find("(a+)(b+)?", "xaab", ""), "1:aab|aa|b"
Check Find("(a)|(b)", "b", ""), "0:b|-|b"
Check Find("<.+?>", "<a><b>", ""), "0:<a>"
Check Find("a{2,3}", "aaaa", "") & Find("a{2,3}?", "aaaa", ""), "0:aaa0:aa"
Check Find("a{,3}x{", "a{,3}x{", ""), "0:a{,3}x{"
Check Find("(.)\1", "abccd", ""), "2:cc|c"
Check Find("(a)\12", "aa2", ""), "0:aa2|a"
Check Find("\x41\u0042\103\cJ\8", "ABC" & vbLf & "8", ""), "0:ABC" & vbLf & "8"
Check Find("\bfoo\b", "a foo b", "") & Find("o\B", "oo", ""), "2:foo0:o"
Check Find("foo(?=bar)", "foobaz foobar", ""), "7:foo"
Check Find("foo(?!bar)", "foobar foobaz", ""), "7:foo"
Check Find("(?=(a+))a*b\1", "baaabac", ""), "3:aba|a"
Check Find("(.*?)a(?!(a+)b\2c)\2(.*)", "baaabaac", ""), "0:baaabaac|ba|-|abaac"
Check Find("^b", "a" & vbLf & "b", "") & Find("^b$", "a" & vbLf & "b" & vbLf, "m"), "none2:b"
Check Find("[^a-c]+", "abcdef", ""), "3:def"
Check Find("[\w.-]+", " a.b-c ", ""), "1:a.b-c"
Check Find("[]x]+", "a]x]", "") & Find("[^]]", "]a", ""), "1:]x]1:a"
Check Find("[^\D5]", "a56", ""), "2:6"
Check Find("HELLÖ [a-c]", "say hellö B", "i"), "4:hellö B"
Check Find("(a*)*", "b", "") & Find("(a*)+", "b", "") & Find("(|a)?b", "b", ""), "0:|-0:|0:b|-"
Check Find("(z)((a+)?(b+)?(c))*", "zaacbbbcac", ""), "0:zaacbbbcac|z|ac|a|-|c"
Check Find("(aa|aabaac|ba|b|c)*", "aabaac", ""), "0:aaba|ba"
Check Find("(?:){1000000000}", "", ""), "0:"
Check Find("é.", "äé" & ChrW(&HD83D), ""), "1:é" & ChrW(&HD83D)

Dim re, pattern, expected
Sub CheckPattern(pattern, number)
  Dim re
  Set re = CreateObject("VBScript.RegExp")
  re.Pattern = pattern
  On Error Resume Next
  re.Test "x"
  Check pattern & " " & Err.Number, pattern & " " & number
End Sub
For Each pattern In Array("a)", "\", "(?<a)", "a{3,2}") : CheckPattern pattern, 5017 : Next
For Each pattern In Array("*a", "a**", "^*", "+") : CheckPattern pattern, 5018 : Next
For Each pattern In Array("[a", "[]", "[a-", "[\") : CheckPattern pattern, 5019 : Next
For Each pattern In Array("(", "(a", "(?:") : CheckPattern pattern, 5020 : Next
CheckPattern "[z-a]", 5021

' Neither a pattern nor a text can hang or crash the engine
CheckPattern String(300, "(") & String(300, ")"), 28
Set re = New RegExp
re.Pattern = "(a+)+b"
Check ErrorIn("re.Test(String(40, ""a""))"), CLng(28)
CheckPattern String(200001, "a"), 28
re.Pattern = "^(a|b)*$"
Check ErrorIn("re.Test(String(1200000, ""a""))"), CLng(28)
re.Pattern = "^(?:a|b)*$"
Check re.Test(String(200000, "a")), True

' Matches, one and all
re.Pattern = "(\w+)@(\w+)\.com"
Check re.Execute("joe@a.com, sue@b.com").Count, CLng(1)
re.Global = True
Dim matches, match, all
Set matches = re.Execute("joe@a.com, sue@b.com")
Check matches.Count, CLng(2)
Check matches.Item(1).SubMatches(0), "sue"
Check matches(1).Length, CLng(9)
Check matches(0).SubMatches.Count, CLng(2)
Check ErrorIn("matches(2)"), CLng(5)
For Each match In matches : all = all & match.Value & ";" : Next
Check all, "joe@a.com;sue@b.com;"
Check re.Replace("joe@a.com", "$2 at $1, $&, $$, $9, $"), "a at joe, joe@a.com, $, $9, $"
Check re.Replace("no", "x"), "no"
re.Pattern = "b"
Check re.Replace("abcb", "[$`|$']"), "a[a|cb]c[abc|]"
re.Global = False
Check re.Replace("abcb", ""), "acb"
re.Pattern = "x*"
re.Global = True
Check re.Replace("ab", "-"), "-a-b-"
Check TypeName(re) & TypeName(matches) & TypeName(matches(0)), "IRegExp2IMatchCollection2IMatch2"
