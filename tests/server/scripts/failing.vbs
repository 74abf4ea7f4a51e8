' For the test of the host: a difference, and an error that ends the script.
Equal 1, 2, "wrong"
Set nothingThere = CreateObject("zelUtilities.zelNothing")
Finished
