 IF NOT EXISTS 
         ( 
             SELECT  TOP 1 1 
             FROM    BU66_DETBUDGET 
             WHERE   BU66_ID_BU65 = 31
             AND     BU66_TIPO = {KIND}
             AND     BU66_PERIODO = {PERIOD}
         ) 
 BEGIN 
         INSERT INTO BU66_DETBUDGET 
         (   BU66_ID_BU65, 
             BU66_TIPO, 
             BU66_PERIODO 
         )   
         VALUES  
         (   31, {KIND}, {PERIOD}
         )   
 END 