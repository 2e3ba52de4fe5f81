namespace qorv {}
