' Names, without a look at the machine
Dim fso, folder, stream, item, names
Set fso = CreateObject("Scripting.FileSystemObject")
Check fso.GetFileName("C:\a\b.tar.gz") & "|" & fso.GetFileName("/a/b/"), "b.tar.gz|b"
Check fso.GetBaseName("C:\a\b.tar.gz") & "|" & fso.GetBaseName("b"), "b.tar|b"
Check fso.GetExtensionName("C:\a.x\b.tar.gz") & "|" & fso.GetExtensionName("a.x\b"), "gz|"
Check fso.GetParentFolderName("C:\a\b\") & "|" & fso.GetParentFolderName("C:\a") & "|" & fso.GetParentFolderName("/"), "C:\a|C:\|"
Check fso.BuildPath("C:\a", "b") & "|" & fso.BuildPath("C:\a\", "\b") & "|" & fso.BuildPath("C:", "b"), "C:\a\b|C:\a\b|C:b"
Check Left(fso.GetTempName, 3) & Right(fso.GetTempName, 4), "rad.tmp"

Check TypeName(fso.GetSpecialFolder(2)), "Folder"
folder = fso.BuildPath(TestFolder, fso.GetTempName)
Check fso.FolderExists(folder), False
Check fso.CreateFolder(folder).Name, fso.GetFileName(folder)
Check ErrorIn("fso.CreateFolder(folder)"), CLng(58)
Check fso.GetAbsolutePathName(folder & "/x/../."), folder

' Text streams
Dim counter : counter = fso.BuildPath(folder, "counter.txt")
Check ErrorIn("fso.OpenTextFile(counter)"), CLng(53)
Set stream = fso.OpenTextFile(counter, 2, True)
stream.WriteLine "one"
stream.Write "zwei ä"
stream.WriteBlankLines 2
Check stream.Line, CLng(4)
Check ErrorIn("stream.ReadLine"), CLng(54)
stream.Close
Check ErrorIn("stream.Line"), CLng(91)
Set stream = fso.OpenTextFile(counter, 8)
stream.Write "end"
Set stream = Nothing
Set stream = fso.OpenTextFile(counter)
Check stream.ReadLine, "one"
Check stream.Read(4), "zwei"
Check stream.Line & "," & stream.Column & "," & stream.AtEndOfLine, "2,5,False"
stream.Skip 2
Check stream.AtEndOfLine, True
stream.SkipLine
Check stream.ReadAll, vbCrLf & "end"
Check stream.AtEndOfStream, True
Check ErrorIn("stream.ReadLine"), CLng(62)
Check ErrorIn("stream.ReadAll"), CLng(62)
stream.Close
Check fso.GetFile(counter).Size, CLng(19)
Check ErrorIn("fso.CreateTextFile(counter, False)"), CLng(58)

Set stream = fso.CreateTextFile(fso.BuildPath(folder, "wide.txt"), True, True)
stream.Write "ä€"
stream.Close
Check fso.GetFile(folder & "/wide.txt").Size, CLng(6)
Check fso.OpenTextFile(folder & "/wide.txt").ReadAll, "ä€"

' Files among themselves
fso.CopyFile counter, folder & "/b.dat"
fso.CopyFile folder & "/*.txt", folder & "/"
Check ErrorIn("fso.CopyFile(counter, folder & ""/b.dat"", False)"), CLng(58)
Check ErrorIn("fso.CopyFile(folder & ""/none*"", folder & ""/"")"), CLng(53)
fso.MoveFile folder & "/b.dat", folder & "/A.dat"
Check ErrorIn("fso.MoveFile(counter, folder & ""/A.dat"")"), CLng(58)
For Each item In fso.GetFolder(folder).Files : names = names & item.Name & ";" : Next
Check names, "A.dat;counter.txt;wide.txt;"
Check fso.GetFolder(folder).Files.Count, CLng(3)
Check fso.GetFolder(folder).Files("A.dat").ParentFolder.Path, folder
Check TypeName(fso.GetFile(counter).DateLastModified), "Date"
Check ErrorIn("fso.GetFile(folder)"), CLng(53)
Check ErrorIn("fso.GetFolder(counter)"), CLng(76)
Check ErrorIn("fso.DeleteFile(folder & ""/none"")"), CLng(53)
fso.DeleteFile folder & "/?*.*"
Check fso.GetFolder(folder).Files.Count, CLng(0)
Check ErrorIn("fso.DeleteFolder(""/"")"), CLng(70)
