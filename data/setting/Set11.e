COMMENT	•W€Ý’è
