#!/usr/bin/env python3
"""Writes the regular parts of the reference data: the nomenclator (ncm), its suffix
definitions (sufidos), the special duties of DIEMCHINA, the internal taxes, the dest rows of
every sub-regime, the demo catalogue and the demo Operations. The data are invented for the
office's own trials; run from anywhere: python3 data/tools/generar.py"""

import csv
import os

RAIZ = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))

# ---------------------------------------------------------------------------------------------
# Nomenclator. Each entry is one tariff item (the first ten characters of a position) with its
# description and its values; every item opens into the statistical openings listed.

# Default values by chapter: unit, import duty, statistics fee, export duty, refund, VAT mark.
CAPITULOS = {
    "02": dict(ramo="A02", u="01", die="10", te="3", de="9", re="0", iva="1"),
    "04": dict(ramo="A04", u="01", die="16", te="3", de="5", re="1.5", iva="1"),
    "09": dict(ramo="A09", u="01", die="10", te="3", de="5", re="0", iva="2"),
    "22": dict(ramo="A22", u="05", die="20", te="3", de="5", re="2.5", iva="2"),
    "30": dict(ramo="Q30", u="01", die="8", te="3", de="0", re="3", iva="0"),
    "39": dict(ramo="Q39", u="01", die="14", te="3", de="4.5", re="2", iva="2"),
    "40": dict(ramo="Q40", u="07", die="16", te="3", de="4.5", re="2", iva="2"),
    "61": dict(ramo="T61", u="07", die="35", te="3", de="0", re="4.05", iva="2"),
    "62": dict(ramo="T62", u="07", die="35", te="3", de="0", re="4.05", iva="2"),
    "63": dict(ramo="T63", u="01", die="26", te="3", de="0", re="3", iva="2"),
    "64": dict(ramo="T64", u="08", die="35", te="3", de="0", re="4.05", iva="2"),
    "72": dict(ramo="M72", u="01", die="12", te="3", de="4.5", re="2.5", iva="2"),
    "73": dict(ramo="M73", u="01", die="16", te="3", de="4.5", re="3", iva="2"),
    "84": dict(ramo="M84", u="07", die="14", te="3", de="0", re="5", iva="1"),
    "85": dict(ramo="M85", u="07", die="18", te="3", de="0", re="5", iva="2"),
    "87": dict(ramo="V87", u="07", die="35", te="3", de="0", re="4.05", iva="2"),
    "90": dict(ramo="M90", u="07", die="14", te="3", de="0", re="3", iva="2"),
    "95": dict(ramo="J95", u="07", die="35", te="3", de="0", re="4.05", iva="2"),
}

# Openings of an item: (code, text). Most items open into "100" and "900".
ABRE_DOS = [("100", "Los demás, nuevos"), ("900", "Los demás")]
ABRE_TRES = [("100", "Presentados para la venta al por menor"), ("200", "A granel"),
             ("900", "Los demás")]
ABRE_UNA = [("000", "")]

# (item, description, openings, values that differ from the chapter's)
ITEMS = [
    # 02 meat
    ("0201.10.00", "Carne bovina en canales o medias canales, fresca o refrigerada", ABRE_DOS, {}),
    ("0201.20.10", "Cuartos delanteros de bovino, frescos o refrigerados", ABRE_DOS, {}),
    ("0201.20.20", "Cuartos traseros de bovino, frescos o refrigerados", ABRE_DOS, {}),
    ("0201.20.90", "Los demás cortes de bovino sin deshuesar, frescos", ABRE_DOS, {}),
    ("0201.30.00", "Carne bovina deshuesada, fresca o refrigerada", ABRE_TRES, {"re": "1.25"}),
    ("0202.10.00", "Carne bovina en canales o medias canales, congelada", ABRE_DOS, {}),
    ("0202.20.10", "Cuartos delanteros de bovino, congelados", ABRE_DOS, {}),
    ("0202.30.00", "Carne bovina deshuesada, congelada", ABRE_TRES, {"re": "1.25"}),
    ("0203.11.00", "Carne porcina en canales, fresca o refrigerada", ABRE_DOS, {}),
    ("0203.29.00", "Las demás carnes porcinas, congeladas", ABRE_DOS, {}),
    ("0206.10.00", "Despojos comestibles de bovino, frescos", ABRE_DOS, {}),
    ("0207.14.00", "Trozos y despojos de gallo o gallina, congelados", ABRE_DOS, {}),
    # 04 dairy
    ("0401.10.10", "Leche UAT (ultra alta temperatura) con grasa hasta 1%", ABRE_DOS, {"u": "05"}),
    ("0401.20.10", "Leche fluida con grasa superior a 1% e inferior a 6%", ABRE_DOS, {"u": "05"}),
    ("0402.10.10", "Leche en polvo con grasa inferior o igual a 1,5%", ABRE_TRES, {}),
    ("0402.21.10", "Leche entera en polvo", ABRE_TRES, {"re": "3"}),
    ("0403.20.00", "Yogur", ABRE_DOS, {}),
    ("0405.10.00", "Manteca", ABRE_DOS, {}),
    ("0406.10.10", "Queso mozzarella", ABRE_DOS, {}),
    ("0406.20.00", "Queso rallado o en polvo", ABRE_DOS, {}),
    ("0406.90.10", "Quesos de pasta dura con humedad inferior a 36%", ABRE_DOS, {}),
    ("0406.90.20", "Quesos de pasta semidura", ABRE_DOS, {}),
    # 09 coffee, tea, mate
    ("0901.11.10", "Café sin tostar, sin descafeinar, en grano", ABRE_DOS, {"de": "0"}),
    ("0901.21.00", "Café tostado sin descafeinar", ABRE_TRES, {}),
    ("0901.22.00", "Café tostado descafeinado", ABRE_DOS, {}),
    ("0902.10.00", "Té verde en envases de contenido inferior o igual a 3 kg", ABRE_DOS, {}),
    ("0902.30.00", "Té negro fermentado en envases inferiores a 3 kg", ABRE_DOS, {}),
    ("0903.00.10", "Yerba mate simplemente canchada", ABRE_DOS, {}),
    ("0903.00.90", "Las demás yerbas mate", ABRE_TRES, {}),
    ("0904.11.00", "Pimienta sin triturar ni pulverizar", ABRE_DOS, {}),
    ("0909.61.10", "Semillas de anís", ABRE_DOS, {}),
    ("0910.11.00", "Jengibre sin triturar ni pulverizar", ABRE_DOS, {}),
    # 22 beverages
    ("2201.10.00", "Agua mineral y agua gaseada", ABRE_DOS, {}),
    ("2202.10.00", "Agua con adición de azúcar o aromatizada (gaseosas)", ABRE_DOS, {}),
    ("2203.00.00", "Cerveza de malta", ABRE_TRES, {"ii": "*"}),
    ("2204.10.10", "Vino espumoso tipo champaña", ABRE_DOS, {}),
    ("2204.21.00", "Vinos en recipientes con capacidad inferior o igual a 2 l", ABRE_TRES,
     {"re": "3.5"}),
    ("2204.29.11", "Vinos en recipientes de capacidad superior a 2 l", ABRE_DOS, {}),
    ("2206.00.10", "Sidra", ABRE_DOS, {}),
    ("2208.30.20", "Whisky con graduación superior a 50% vol", ABRE_DOS,
     {"ii": "*", "estampillado": "*"}),
    ("2208.40.00", "Ron y demás aguardientes de caña", ABRE_DOS, {"ii": "*", "estampillado": "*"}),
    ("2208.60.00", "Vodka", ABRE_DOS, {"ii": "*", "estampillado": "*"}),
    ("2209.00.00", "Vinagre de vino", ABRE_DOS, {}),
    # 30 pharmaceuticals
    ("3002.41.10", "Vacunas para medicina humana", ABRE_DOS, {"die": "0", "intervencion": "*"}),
    ("3003.10.11", "Medicamentos con penicilinas sin dosificar", ABRE_DOS, {"intervencion": "*"}),
    ("3004.10.12", "Medicamentos con ampicilina dosificados", ABRE_DOS, {"intervencion": "*"}),
    ("3004.20.19", "Medicamentos con otros antibióticos dosificados", ABRE_DOS,
     {"intervencion": "*"}),
    ("3004.31.00", "Medicamentos que contengan insulina", ABRE_DOS,
     {"die": "0", "intervencion": "*"}),
    ("3004.39.29", "Medicamentos con otras hormonas", ABRE_DOS, {"intervencion": "*"}),
    ("3004.50.10", "Medicamentos con vitamina A", ABRE_DOS, {"intervencion": "*"}),
    ("3004.90.99", "Los demás medicamentos dosificados", ABRE_TRES, {"intervencion": "*"}),
    ("3005.10.20", "Apósitos adhesivos", ABRE_DOS, {"iva": "2"}),
    ("3006.10.10", "Catgut estéril para suturas", ABRE_DOS, {"iva": "2"}),
    # 39 plastics
    ("3901.10.10", "Polietileno de densidad inferior a 0,94 sin carga", ABRE_DOS, {}),
    ("3901.20.29", "Polietileno de densidad superior o igual a 0,94", ABRE_DOS, {}),
    ("3902.10.20", "Polipropileno sin carga", ABRE_DOS, {}),
    ("3903.19.00", "Los demás poliestirenos", ABRE_DOS, {}),
    ("3904.10.10", "Poli(cloruro de vinilo) obtenido por suspensión", ABRE_DOS, {}),
    ("3907.61.00", "Poli(tereftalato de etileno) con índice de viscosidad superior", ABRE_DOS, {}),
    ("3917.23.00", "Tubos rígidos de polímeros de cloruro de vinilo", ABRE_DOS, {}),
    ("3919.10.00", "Cintas autoadhesivas en rollos de anchura inferior a 20 cm", ABRE_DOS, {}),
    ("3920.20.19", "Placas de polímeros de propileno", ABRE_DOS, {}),
    ("3923.21.90", "Sacos y bolsas de polímeros de etileno", ABRE_TRES, {}),
    ("3923.30.00", "Bombonas, botellas, frascos y artículos similares de plástico", ABRE_TRES, {}),
    ("3924.10.00", "Vajilla y artículos para el servicio de mesa de plástico", ABRE_DOS,
     {"u": "07"}),
    ("3926.90.90", "Las demás manufacturas de plástico", ABRE_TRES, {}),
    # 40 rubber
    ("4011.10.00", "Neumáticos nuevos de caucho para automóviles de turismo", ABRE_DOS,
     {"aec": "18", "referencia": "*"}),
    ("4011.20.90", "Neumáticos nuevos para autobuses o camiones", ABRE_DOS, {"aec": "18"}),
    ("4011.40.00", "Neumáticos nuevos para motocicletas", ABRE_DOS, {}),
    ("4011.50.00", "Neumáticos nuevos para bicicletas", ABRE_DOS, {}),
    ("4012.20.00", "Neumáticos usados", ABRE_DOS, {"prohibicion": "*", "usados": "*"}),
    ("4013.10.00", "Cámaras de caucho para automóviles", ABRE_DOS, {}),
    ("4016.93.00", "Juntas o empaquetaduras de caucho vulcanizado", ABRE_DOS,
     {"u": "01", "aec": "14"}),
    # 61 knitted apparel (specific duty per unit)
    ("6103.42.00", "Pantalones de punto de algodón para hombres o niños", ABRE_DOS,
     {"esp": ("07", "10")}),
    ("6104.62.00", "Pantalones de punto de algodón para mujeres o niñas", ABRE_DOS,
     {"esp": ("07", "10")}),
    ("6105.10.00", "Camisas de punto de algodón para hombres o niños", ABRE_DOS,
     {"esp": ("07", "8")}),
    ("6109.10.00", "T-shirts y camisetas de punto de algodón", ABRE_TRES,
     {"esp": ("07", "5.5")}),
    ("6110.20.00", "Suéteres y pulóveres de punto de algodón", ABRE_DOS, {"esp": ("07", "12")}),
    ("6115.95.00", "Calcetines de punto de algodón", ABRE_DOS, {"u": "08", "esp": ("08", "1.6")}),
    # 62 apparel
    ("6203.42.00", "Pantalones de algodón para hombres o niños", ABRE_DOS,
     {"esp": ("07", "10")}),
    ("6204.62.00", "Pantalones de algodón para mujeres o niñas", ABRE_DOS,
     {"esp": ("07", "10")}),
    ("6205.20.00", "Camisas de algodón para hombres o niños", ABRE_DOS, {"esp": ("07", "8")}),
    ("6206.40.00", "Camisas y blusas de fibras sintéticas para mujeres", ABRE_DOS,
     {"esp": ("07", "8")}),
    # 63 made-up textiles
    ("6302.21.00", "Ropa de cama estampada de algodón", ABRE_DOS, {}),
    ("6302.60.00", "Ropa de tocador o cocina de tejido con bucles de algodón", ABRE_DOS, {}),
    ("6309.00.10", "Artículos de prendería (ropa usada)", ABRE_DOS,
     {"prohibicion": "*", "usados": "*"}),
    ("6310.10.00", "Trapos clasificados", ABRE_DOS, {}),
    # 64 footwear (specific duty per pair)
    ("6402.19.00", "Calzado para deportes con suela y parte superior de caucho o plástico",
     ABRE_DOS, {"esp": ("08", "12")}),
    ("6402.99.90", "Los demás calzados de caucho o plástico", ABRE_TRES, {"esp": ("08", "10.5")}),
    ("6403.59.00", "Calzado con suela de cuero natural", ABRE_DOS, {"esp": ("08", "15")}),
    ("6403.91.90", "Calzado que cubra el tobillo con parte superior de cuero", ABRE_DOS,
     {"esp": ("08", "15")}),
    ("6403.99.90", "Los demás calzados con parte superior de cuero natural", ABRE_TRES,
     {"esp": ("08", "13")}),
    ("6404.11.00", "Calzado de deporte con parte superior de materia textil", ABRE_DOS,
     {"esp": ("08", "12")}),
    ("6404.19.00", "Los demás calzados con parte superior de materia textil", ABRE_DOS,
     {"esp": ("08", "9")}),
    # 72 iron and steel
    ("7208.51.00", "Productos laminados planos de hierro sin alear, espesor superior a 10 mm",
     ABRE_DOS, {"aceros": "*"}),
    ("7208.52.00", "Productos laminados planos de espesor entre 4,75 mm y 10 mm", ABRE_DOS,
     {"aceros": "*"}),
    ("7209.17.00", "Laminados planos en frío de espesor entre 0,5 mm y 1 mm", ABRE_DOS,
     {"aceros": "*"}),
    ("7210.49.10", "Laminados planos galvanizados", ABRE_DOS, {"aceros": "*"}),
    ("7213.10.00", "Alambrón con muescas o cordones", ABRE_DOS, {"aceros": "*"}),
    ("7214.20.00", "Barras con muescas o cordones para hormigón", ABRE_DOS, {"aceros": "*"}),
    ("7219.33.00", "Laminados planos de acero inoxidable en frío", ABRE_DOS, {"aceros": "*"}),
    # 73 articles of steel
    ("7306.30.00", "Tubos soldados de sección circular de hierro o acero", ABRE_DOS,
     {"aceros": "*"}),
    ("7318.15.00", "Tornillos y pernos de fundición, hierro o acero", ABRE_TRES,
     {"antidumping": "*"}),
    ("7318.16.00", "Tuercas de fundición, hierro o acero", ABRE_DOS, {"antidumping": "*"}),
    ("7321.11.00", "Cocinas de combustible gaseoso", ABRE_DOS, {"u": "07", "gas": "*"}),
    ("7323.93.00", "Artículos de uso doméstico de acero inoxidable", ABRE_DOS, {}),
    # 84 machinery
    ("8407.34.90", "Motores de émbolo alternativo de cilindrada superior a 1000 cm3", ABRE_DOS,
     {"aec": "18", "lapi": "*"}),
    ("8408.20.90", "Motores de encendido por compresión para vehículos", ABRE_DOS,
     {"aec": "18", "lapi": "*"}),
    ("8409.91.12", "Pistones para motores de encendido por chispa", ABRE_DOS,
     {"aec": "16", "lapi": "*", "letra100": "G"}),
    ("8409.99.12", "Pistones para motores de encendido por compresión", ABRE_DOS,
     {"aec": "16", "lapi": "*", "letra100": "C"}),
    ("8413.70.10", "Bombas centrífugas monocelulares", ABRE_DOS, {"bk": "*"}),
    ("8414.51.10", "Ventiladores de mesa, pie, pared o techo", ABRE_DOS,
     {"segelect": "*", "iva": "2"}),
    ("8415.10.11", "Acondicionadores de aire de pared o ventana", ABRE_DOS,
     {"segelect": "*", "iva": "2"}),
    ("8418.10.00", "Combinaciones de refrigerador y congelador", ABRE_DOS,
     {"segelect": "*", "iva": "2"}),
    ("8421.21.00", "Aparatos para filtrar o depurar agua", ABRE_DOS, {"bk": "*"}),
    ("8422.30.10", "Máquinas para llenar, cerrar y etiquetar botellas", ABRE_DOS,
     {"bk": "*", "die": "14"}),
    ("8428.90.90", "Las demás máquinas de elevación y manipulación", ABRE_DOS, {"bk": "*"}),
    ("8429.51.19", "Cargadoras frontales de ruedas", ABRE_DOS, {"bk": "*", "mineras": "*"}),
    ("8443.32.21", "Impresoras láser conectables a máquinas de proceso de datos", ABRE_DOS,
     {"bit": "*", "iva": "1"}),
    ("8450.11.00", "Lavarropas totalmente automáticos", ABRE_DOS, {"segelect": "*", "iva": "2"}),
    ("8462.10.19", "Máquinas de forjar o estampar", ABRE_DOS, {"bk": "*"}),
    ("8471.30.12", "Máquinas portátiles de proceso de datos de peso inferior a 3,5 kg",
     ABRE_TRES, {"bit": "*", "die": "16", "re": "2"}),
    ("8471.41.10", "Máquinas de proceso de datos de escritorio", ABRE_DOS, {"bit": "*"}),
    ("8471.49.00", "Las demás máquinas de proceso de datos en forma de sistemas", ABRE_DOS,
     {"bit": "*"}),
    ("8471.50.10", "Unidades de proceso de pequeña capacidad", ABRE_DOS, {"bit": "*"}),
    ("8471.60.52", "Teclados", ABRE_DOS, {"bit": "*"}),
    ("8471.70.12", "Unidades de discos rígidos", ABRE_DOS, {"bit": "*"}),
    ("8479.89.99", "Las demás máquinas con función propia", ABRE_TRES, {"bk": "*"}),
    ("8481.80.97", "Las demás válvulas y grifería", ABRE_DOS, {"u": "01"}),
    # 85 electrical
    ("8504.40.90", "Convertidores estáticos (fuentes de alimentación)", ABRE_DOS,
     {"segelect": "*"}),
    ("8507.60.00", "Acumuladores de iones de litio", ABRE_DOS, {}),
    ("8509.40.10", "Licuadoras domésticas", ABRE_DOS, {"segelect": "*"}),
    ("8516.10.00", "Calentadores eléctricos de agua", ABRE_DOS, {"segelect": "*"}),
    ("8516.50.00", "Hornos de microondas", ABRE_DOS, {"segelect": "*"}),
    ("8516.60.00", "Los demás hornos; cocinas, hornillos y parrillas eléctricas", ABRE_DOS,
     {"segelect": "*", "antidumping": "*"}),
    ("8517.13.00", "Teléfonos inteligentes", ABRE_DOS, {"bit": "*", "ii": "*", "die": "20"}),
    ("8517.62.59", "Aparatos para la recepción y transmisión de datos", ABRE_DOS, {"bit": "*"}),
    ("8528.72.00", "Aparatos receptores de televisión en colores", ABRE_DOS,
     {"segelect": "*", "ii": "*"}),
    ("8536.50.90", "Los demás interruptores para tensión inferior a 1000 V", ABRE_DOS,
     {"segelect": "*"}),
    ("8539.52.00", "Lámparas y tubos de diodos emisores de luz (LED)", ABRE_DOS,
     {"segelect": "*"}),
    ("8544.42.00", "Conductores eléctricos provistos de piezas de conexión", ABRE_DOS,
     {"u": "01", "segelect": "*"}),
    # 87 vehicles
    ("8703.21.00", "Automóviles de cilindrada inferior o igual a 1000 cm3", ABRE_DOS,
     {"die": "35", "aec": "35", "lapi": "*", "ii": "*"}),
    ("8703.22.10", "Automóviles de cilindrada entre 1000 y 1500 cm3", ABRE_DOS,
     {"aec": "35", "lapi": "*"}),
    ("8703.23.10", "Automóviles de cilindrada entre 1500 y 3000 cm3", ABRE_DOS,
     {"aec": "35", "lapi": "*", "ii": "*"}),
    ("8703.24.10", "Automóviles de cilindrada superior a 3000 cm3", ABRE_DOS,
     {"aec": "35", "lapi": "*", "ii": "*"}),
    ("8703.32.10", "Automóviles diésel de cilindrada entre 1500 y 2500 cm3", ABRE_DOS,
     {"aec": "35", "lapi": "*"}),
    ("8703.80.00", "Automóviles propulsados únicamente por motor eléctrico", ABRE_DOS,
     {"die": "2", "aec": "35"}),
    ("8704.21.10", "Camionetas diésel de peso total inferior a 5 t", ABRE_DOS,
     {"aec": "35", "lapi": "*"}),
    ("8708.10.00", "Parachoques y sus partes", ABRE_DOS,
     {"aec": "18", "lapi": "*", "u": "01"}),
    ("8708.29.99", "Las demás partes y accesorios de carrocerías", ABRE_TRES,
     {"aec": "18", "lapi": "*", "u": "01"}),
    ("8708.30.11", "Guarniciones de frenos montadas", ABRE_DOS,
     {"aec": "18", "lapi": "*", "u": "01"}),
    ("8708.40.90", "Cajas de cambio y sus partes", ABRE_DOS, {"aec": "18", "lapi": "*"}),
    ("8708.70.90", "Ruedas, sus partes y accesorios", ABRE_DOS, {"aec": "18", "lapi": "*"}),
    ("8708.80.00", "Sistemas de suspensión y sus partes (amortiguadores)", ABRE_DOS,
     {"aec": "18", "lapi": "*"}),
    ("8708.99.90", "Las demás partes y accesorios de vehículos automóviles", ABRE_TRES,
     {"aec": "18", "lapi": "*", "u": "01"}),
    ("8711.20.10", "Motocicletas de cilindrada entre 50 y 250 cm3", ABRE_DOS, {"lapi": "*"}),
    ("8712.00.10", "Bicicletas", ABRE_DOS, {}),
    # 90 instruments
    ("9004.10.00", "Gafas (anteojos) de sol", ABRE_DOS, {}),
    ("9018.31.11", "Jeringas de plástico", ABRE_DOS, {"intervencion": "*", "iva": "1"}),
    ("9018.90.99", "Los demás instrumentos y aparatos de medicina", ABRE_DOS, {"iva": "1"}),
    ("9025.11.10", "Termómetros clínicos de líquido", ABRE_DOS, {}),
    ("9026.10.19", "Medidores de caudal o nivel de líquidos", ABRE_DOS, {"bk": "*"}),
    ("9027.80.99", "Los demás instrumentos de análisis físicos o químicos", ABRE_DOS,
     {"bk": "*"}),
    ("9028.30.11", "Contadores de electricidad monofásicos", ABRE_DOS, {"segelect": "*"}),
    ("9032.10.10", "Termostatos de expansión de fluidos", ABRE_DOS, {}),
    # 95 toys
    ("9503.00.10", "Triciclos, patinetes y juguetes similares con ruedas", ABRE_DOS,
     {"esp": ("07", "6")}),
    ("9503.00.22", "Muñecas, incluso vestidas", ABRE_DOS, {"esp": ("07", "4")}),
    ("9503.00.31", "Juguetes que representen animales rellenos", ABRE_DOS,
     {"esp": ("07", "3.5")}),
    ("9503.00.97", "Los demás juguetes", ABRE_TRES, {"esp": ("07", "2.5")}),
    ("9504.50.00", "Videoconsolas y máquinas de videojuego", ABRE_DOS, {"bit": "*"}),
    ("9506.62.00", "Balones y pelotas inflables", ABRE_DOS, {}),
    ("9506.91.00", "Artículos para cultura física, gimnasia o atletismo", ABRE_DOS, {}),
]

FUENTES = {"die": "DTO.509/07", "te": "LEY 27.541", "esp": "DTO.1126/17", "de": "DTO.1060/20",
           "re": "DTO.1011/91", "dii": "ACE 18", "br": "ACE 18 BR", "uy": "ACE 18 UY",
           "py": "ACE 18 PY"}


def letra_control(codigo, apertura):
    digitos = [int(c) for c in codigo + apertura if c.isdigit()]
    suma = sum((i + 3) * d for i, d in enumerate(digitos))
    return chr(ord("A") + suma % 26)


def posiciones():
    """Every position as a dict of the columns "001".."062"."""
    filas = []
    for item, desc, aperturas, dif in ITEMS:
        cap = CAPITULOS[item[:2]]
        v = dict(cap)
        v.update(dif)
        for ap, texto in aperturas:
            letra = letra_control(item, ap)
            if ap == "100" and "letra100" in v:
                letra = v["letra100"]
            c = {("%03d" % i): "" for i in range(1, 63)}
            c["001"], c["002"], c["003"] = item, ap, letra
            c["004"] = (texto.upper() if texto else desc.upper())
            c["010"] = desc.upper()
            c["012"] = v["u"]
            c["013"] = v["ramo"]
            c["015"] = v["die"]
            c["016"] = v["te"]
            c["018"] = v["de"]
            c["019"] = v["re"]
            c["021"] = "0"
            c["023"] = str(round(float(v["re"]) / 2, 2)) if float(v["re"]) > 0 else "0"
            if "esp" in v:
                c["020"], c["017"] = v["esp"]
                c["053"] = "2" if item[:2] == "64" else "1"
            if "aec" in v:
                c["028"], c["026"] = "*", v["aec"]
            c["048"] = v["iva"]
            c["030"], c["031"], c["033"], c["034"] = (FUENTES["die"], FUENTES["te"],
                                                      FUENTES["de"], FUENTES["re"])
            c["032"] = FUENTES["esp"] if "esp" in v else ""
            c["035"], c["036"], c["037"], c["038"] = (FUENTES["dii"], FUENTES["br"],
                                                      FUENTES["uy"], FUENTES["py"])
            marcas = {"ii": "040", "estampillado": "041", "intervencion": "043",
                      "prohibicion": "044", "antidumping": "045", "usados": "047",
                      "referencia": "050", "segelect": "052", "bk": "055", "bit": "056",
                      "lapi": "059", "mineras": "060", "gas": "061", "aceros": "062"}
            for k, col in marcas.items():
                if v.get(k):
                    c[col] = "*"
            if item[:2] in ("61", "62", "64", "95"):
                c["042"] = "*"  # labelling
                c["049"] = "*"  # certificate of origin
                c["050"] = "*"  # reference values
            if ap == "900" and item[:2] in ("84", "85"):
                c["047"] = "*"  # the openings "los demás" admit used goods with permit
            filas.append(c)
    return filas


# ---------------------------------------------------------------------------------------------
# Suffixes: (sim prefix, sufijo, detalle). The level is the length of the prefix: 2 chapter,
# 4 heading, 7 subheading, 14 full position.

SUFIJOS = [
    ("02", "AA", "ESTABLECIMIENTO ELABORADOR"),
    ("02", "CO01", "ENFRIADO"), ("02", "CO02", "CONGELADO"),
    ("0201", "TR01", "CON HUESO"), ("0201", "TR02", "SIN HUESO"),
    ("0202", "TR01", "CON HUESO"), ("0202", "TR02", "SIN HUESO"),
    ("22", "AA", "MARCA"), ("22", "ZC", "GRADUACION ALCOHOLICA (% VOL X 10)"),
    ("2204", "VA01", "MALBEC"), ("2204", "VA02", "CABERNET SAUVIGNON"),
    ("2204", "VA03", "TORRONTES"), ("2204", "VA99", "OTRAS VARIEDADES"),
    ("2208", "ZE", "AÑOS DE AÑEJAMIENTO"),
    ("30", "AA", "NOMBRE COMERCIAL"), ("30", "AE", "NUMERO DE CERTIFICADO ANMAT"),
    ("40", "AA", "MARCA"), ("40", "US01", "NUEVO"), ("40", "US02", "RECAUCHUTADO"),
    ("61", "AA", "MARCA"), ("61", "CP01", "ALGODON 100%"),
    ("61", "CP02", "MEZCLA CON PREDOMINIO DE ALGODON"), ("61", "CP03", "FIBRAS SINTETICAS"),
    ("61", "GE01", "HOMBRE"), ("61", "GE02", "MUJER"), ("61", "GE03", "NIÑO"),
    ("62", "AA", "MARCA"), ("62", "CP01", "ALGODON 100%"),
    ("62", "CP02", "MEZCLA CON PREDOMINIO DE ALGODON"), ("62", "CP03", "FIBRAS SINTETICAS"),
    ("62", "GE01", "HOMBRE"), ("62", "GE02", "MUJER"), ("62", "GE03", "NIÑO"),
    ("64", "AA", "MARCA"), ("64", "ZB", "TALLE"),
    ("64", "MS01", "SUELA DE CAUCHO O PLASTICO"), ("64", "MS02", "SUELA DE CUERO"),
    ("6403", "TC01", "CAÑA ALTA"), ("6403", "TC02", "CAÑA BAJA"),
    ("84", "AA", "MARCA"), ("84", "AB", "MODELO"), ("84", "AI", "IDENTIFICACION DEL ARTICULO"),
    ("84", "ZA", "AÑO DE FABRICACION"),
    ("84", "EM01", "NUEVO SIN USO"), ("84", "EM02", "USADO"), ("84", "EM03", "REACONDICIONADO"),
    ("8471", "ZD", "MEMORIA RAM (GB)"),
    ("8471", "PR01", "PROCESADOR INTEL"), ("8471", "PR02", "PROCESADOR AMD"),
    ("8471", "PR03", "OTRO PROCESADOR"),
    ("8471.30", "ZG", "PESO (GRAMOS)"), ("8471.30", "ZH", "PANTALLA (PULGADAS X 10)"),
    ("8471.30.12.100", "AJ", "NUMERO DE SERIE"),
    ("8409.91.12.100", "ZJ", "DIAMETRO DEL PISTON (MM)"),
    ("85", "AA", "MARCA"), ("85", "AB", "MODELO"), ("85", "AI", "IDENTIFICACION DEL ARTICULO"),
    ("85", "TE01", "220 V"), ("85", "TE02", "110 V"), ("85", "TE03", "BIVOLT"),
    ("8517", "HO01", "HOMOLOGADO"), ("8517", "HO02", "SIN HOMOLOGAR"),
    ("8517.13", "AK", "IMEI"),
    ("8528.72", "ZI", "TAMAÑO DE PANTALLA (PULGADAS)"),
    ("87", "AA", "MARCA"), ("87", "AB", "MODELO"), ("87", "AI", "IDENTIFICACION DEL ARTICULO"),
    ("8703", "ZF", "CILINDRADA (CM3)"), ("8703", "ZA", "AÑO MODELO"),
    ("8703", "CB01", "NAFTA"), ("8703", "CB02", "DIESEL"), ("8703", "CB03", "ELECTRICO"),
    ("8703", "CB04", "HIBRIDO"),
    ("8703.23", "TR01", "TRACCION SIMPLE"), ("8703.23", "TR02", "TRACCION INTEGRAL"),
    ("8703.23.10.100", "SE01", "CON AIRBAGS FRONTALES"),
    ("8703.23.10.100", "SE02", "CON AIRBAGS FRONTALES Y LATERALES"),
    ("8708.30", "AD", "NUMERO DE PIEZA ORIGINAL"),
    ("95", "AA", "MARCA"), ("95", "ED01", "HASTA 3 AÑOS"), ("95", "ED02", "DE 3 A 8 AÑOS"),
    ("95", "ED03", "MAYORES DE 8 AÑOS"),
]


def sim(prefijo):
    if len(prefijo) == 2:
        return prefijo + "  .  .  .   "
    if len(prefijo) == 4:
        return prefijo + ".  .  .   "
    if len(prefijo) == 7:
        return prefijo + ".  .   "
    return prefijo


def sims_de(pos14):
    return [pos14[:2] + "  .  .  .   ", pos14[:4] + ".  .  .   ", pos14[:7] + ".  .   ",
            pos14[:14]]


def sufijos_de(pos14):
    """Applicable suffix rows of a position, by prefix."""
    aplican = set(sims_de(pos14))
    por_prefijo = {}
    for p, suf, det in SUFIJOS:
        if sim(p) in aplican:
            por_prefijo.setdefault(suf[:2], []).append((suf, det))
    return por_prefijo


def limpiar(valor):
    """The clean-up a typed suffix value goes through."""
    t = str(valor)
    for c in "()-":
        t = t.replace(c, " ")
    t = t.strip().upper()[:20]
    return "".join(c if (c.isalnum() and c.isascii()) or c in "Ñ/.,#&" else " " for c in t)


def cadena_sufijos(pos14, valores):
    """The suffix string of a goods line: valores maps each prefix to its value (free codes)
    or to the four-character option (listed codes)."""
    pref = sufijos_de(pos14)
    if not pref:
        return "SIN SUFIJOS"
    tokens = []
    for p in sorted(pref):
        filas = pref[p]
        if len(filas[0][0]) == 2:
            v = valores[p]
            if p[0] == "Z":
                v = "%06d" % int(str(v)[:6])
            else:
                v = limpiar(v)
            tokens.append("%s(%s)" % (p, v))
        else:
            opcion = valores[p]
            assert opcion in [f[0] for f in filas], (pos14, opcion)
            tokens.append(opcion)
    faltan = set(valores) - set(pref)
    assert not faltan, (pos14, faltan)
    return "-".join(tokens) + "-"


# ---------------------------------------------------------------------------------------------


def escribir(ruta, encabezado, filas):
    ruta = os.path.join(RAIZ, ruta)
    os.makedirs(os.path.dirname(ruta), exist_ok=True)
    with open(ruta, "w", newline="", encoding="utf-8") as f:
        w = csv.writer(f, lineterminator="\n")
        w.writerow(encabezado)
        for fila in filas:
            w.writerow(fila)


def posicion(filas, item, apertura):
    for c in filas:
        if c["001"] == item and c["002"] == apertura:
            return c["001"] + "." + c["002"] + c["003"], c
    raise KeyError(item + "." + apertura)


def main():
    filas = posiciones()
    cols = ["%03d" % i for i in range(1, 63)]
    escribir("ncm/ncm.csv", cols, [[c[k] for k in cols] for c in filas])
    escribir("ncm/sufidos.csv", ["sim", "sufijo", "detalle"],
             [[sim(p), s, d] for p, s, d in SUFIJOS])
    escribir("ncm/control_fecha.csv", ["fecha"], [["2026-01-15"], ["2026-03-02"]])

    # Special duty of country 310, per tariff item.
    diem = [(c["001"], {"61": "14", "62": "16", "64": "22", "95": "6.5"}[c["001"][:2]])
            for c in filas if c["001"][:2] in ("61", "62", "64", "95") and c["002"] == "100"]
    escribir("systablas/diemchina.csv", ["ncm", "diem"], diem)

    # Internal taxes, per full position.
    ii = []
    for c in filas:
        if c["040"] != "*":
            continue
        p = c["001"] + "." + c["002"] + c["003"]
        cap = c["001"][:4]
        if cap == "2203":
            ii.append((p, "DEC290_00", "8"))
        elif cap == "2208":
            ii.append((p, "SINDEC", "20"))
        elif cap == "8703":
            ii.append((p, "DEC290_00", "20"))
        else:
            ii.append((p, "SINDEC", "17"))
    escribir("usuario/impuestos_internos.csv", ["ncm", "decreto", "tasa_nominal"], ii)

    escribir_dest()
    escribir_demo(filas)


# ---------------------------------------------------------------------------------------------
# dest: for each sub-regime the fields of the header it does not use, marked "x".

CAMPOS = ("TxtSubReg TxtSubRegDesc txtIdAduana1 TxtAduana1 TxtIdAduana2 TxtAduana2 "
          "TxtCUITCliente TxtNombre TxtCuitAduana TxtNombreadu Txtidvendedor TxtNombreven "
          "Txtfobdivisas TxtCoddivfob TxtDivValorFob TxtDolFob Txtfletedivisas TxtCodDivFlete "
          "TxtDivValorFlete TxtDolFlete Txtsegurodivisas TxtCodDivseguro TxtDivValorSeguro "
          "TxtDolSeguro TxtPorc TxtProrratear TxtAjustIncluir TxtAjustDeducir TxtFactCon "
          "Txtidcondventa Txtidpais TxtdescPais Txtmotdestsusp TxtautdestSusp TxtPlazoaut "
          "TxtCierreVenta txtFechaEmbarque cboFacilidadPago txtDepAlm TxtFactura LstFact "
          "ChFacturas txtDCEstMerc chkDCForzarEstMerc txtDCPaisOrigen chkDCForzarPaisOrigen "
          "txtDCPaisDest txtDCStandard TxtDCRegalias txtDCBancos txtKgNeto txtDCComiExt "
          "cboOpcionIVA cboOpcionesGanancias").split()

SUSPENSIVA = ["Txtmotdestsusp", "TxtautdestSusp", "TxtPlazoaut"]
DEPOSITO = ["txtDepAlm"]
SALIDA = ["TxtIdAduana2", "TxtAduana2"]
EXPORTACION = ["TxtCierreVenta", "txtDCBancos", "txtDCComiExt"]
FACILIDAD = ["cboFacilidadPago"]
VENDEDOR = ["Txtidvendedor", "TxtNombreven"]
CONDVENTA = ["Txtidcondventa"]
VALORES = ["Txtfletedivisas", "Txtsegurodivisas", "TxtPorc", "TxtProrratear",
           "TxtAjustIncluir", "TxtAjustDeducir"]


def ocultos(subreg):
    o = set(FACILIDAD) if subreg != "EC16" else set()
    if subreg.startswith(("IC", "IG", "ID", "LAPI", "ZFE")):
        o |= set(SUSPENSIVA + SALIDA + EXPORTACION)
        if subreg.startswith("ZFE"):
            o |= set(VENDEDOR)
        if subreg == "IC34":
            o |= set(CONDVENTA)
    elif subreg.startswith("IT"):
        o |= set(SALIDA + EXPORTACION)
    elif subreg.startswith(("EC", "EG")):
        o |= set(SUSPENSIVA + ["TxtAjustIncluir", "TxtAjustDeducir"])
    elif subreg.startswith("ET"):
        o |= set(["TxtAjustIncluir", "TxtAjustDeducir"])
    elif subreg.startswith("TR"):
        o |= set(SUSPENSIVA + EXPORTACION + VENDEDOR + CONDVENTA + VALORES)
    if not subreg.endswith("06"):
        o |= set(DEPOSITO)
    return o


def escribir_dest():
    with open(os.path.join(RAIZ, "internos/sta.csv"), encoding="utf-8") as f:
        subregs = [r["id"] for r in csv.DictReader(f)]
    filas = []
    for s in subregs:
        o = ocultos(s)
        filas.append([s] + ["x" if c in o else "" for c in CAMPOS])
    escribir("usuario/dest.csv", ["subreg"] + CAMPOS, filas)


# ---------------------------------------------------------------------------------------------
# Demo Operations.

CARATULA = ("interno fechaalta idsubreg idaduana idaduanasal cuitcliente cuitdespaduana "
            "idvendedor factura1 factura2 factura3 factura5 factura6 factura7 factura8 factura9 "
            "factura10 facturas fobdivisas fobcoddivisas fobdivcambio fletedivisas "
            "fletecoddivisas fletedivcambio segurodivisas segurocoddivisas segurodivcambio "
            "seguroporcentaje valoraprorratear ajusteincluir ajustededucir factorconver "
            "idcondiciondeventa idpaisdestino motivodestsuspensiva autorizdestsuspensiva "
            "plazoautorizacion cierreventa fechaembarque facilidadpago dcestmerc dcforzarestmerc "
            "dcpaisorigen dcforzarpaisorigen dcpaisdestino dcstandard dcregalias dcbancos "
            "dckgneto dccomext opcionesiva opcionesganancias bulnro bulcod bultip bulpes buldes "
            "marcabul via trans bandera cuittrans venemb onccahabilitado onccaacuerdo "
            "onccaelaborador onccaespecie onccafaneador onccamatadero onccameccoorgbio "
            "onccares3106 onccasispro onccacategoria onccacortes").split()

SUBITEMS = ("id interno idcatalogo idarticulo ncm idunidad cantidad preciounitario fob "
            "estadistica valorrelacionestadistica deresp valorderesp idpais idpaisproc "
            "estadomerc sufijos biendeuso codprorrateo insumostemp insumosacons cancelaciones "
            "canccantidad cancnroitem cancnrosubitem sbtrei lapi kgneto kgbruto descripcion "
            "otros itfiller certorig onccacategoria onccacortes codigoean tipoitem").split()

NOMBRES = {"30708123451": "IMPORTADORA DEL PLATA S.A.",
           "30712345671": "METALURGICA D'ANGELO HNOS S.R.L.",
           "30500001239": "FRIGORIFICO LAS PAMPAS S.A.",
           "30698765433": "MAQUINARIAS DEL SUR S.A.",
           "20203040505": "GOMEZ MARIA LAURA",
           "27312345671": "FERNANDEZ O'NEILL PATRICIA",
           "V001": "ROBERTO SALINAS", "V002": "CLAUDIA BENITEZ",
           "30543210982": "AGENCIA MARITIMA RIO DE LA PLATA S.A."}


def num(x):
    s = ("%.6f" % x).rstrip("0").rstrip(".")
    return s if s else "0"


# Each line: item, opening, description, country of origin, unit, quantity, unit price,
# statistics quantity (None: the quantity itself), specific quantity, net and gross kilos,
# suffix values, article, capital good, state, ONCCA category and cut.
OPERACIONES = [
    dict(
        interno="DEMO-IC04-001", fecha="2026-02-10", subreg="IC04", aduana="001", salida="",
        cliente="30708123451", despachante="20203040505", vendedor="V001",
        facturas=["A-0001-00012345", "A-0001-00012346"], divisa="DOL", cambio=1,
        flete=850, seguro=120.5, condicion="FOB", pais="310", motivo="", autoriz="", plazo="",
        cierre="", embarque="15/01/2026", iva="NO_VALIDA", ganancias="COMERC", oncca="N",
        lineas=[
            ("8471.30.12", "100", "NOTEBOOK 14 PULGADAS 16GB RAM", "310", "07", 20, 450, None,
             0, 36, 44, {"AA": "LENOVO", "AB": "IDEAPAD 5", "AI": "NB-14-16", "ZA": 2025,
                         "EM": "EM01", "ZD": 16, "PR": "PR02", "ZG": 1550, "ZH": 140,
                         "AJ": "PF4XK2LM"}, "NB-14-16", "N", "1"),
            ("6403.99.90", "100", "ZAPATO DE CUERO PARA HOMBRE", "310", "08", 120, 18.5, None,
             120, 96, 110, {"AA": "SIN MARCA", "ZB": 42, "MS": "MS02", "TC": "TC02"},
             "ZAP-CU-42", "N", "1"),
            ("8516.60.00", "100", "HORNO ELECTRICO 45 LITROS", "203", "07", 30, 95, None, 0,
             360, 420, {"AA": "ELECTROLUX", "AB": "EOT45", "AI": "HE-45", "TE": "TE01"},
             "HE-45", "N", "1"),
            ("9503.00.97", "100", "JUGUETE DE ENCASTRE PLASTICO", "310", "07", 500, 2.3, None,
             500, 150, 175, {"AA": "SIN MARCA", "ED": "ED02"}, "JUG-ENC", "N", "1"),
            ("3923.30.00", "200", "BOTELLAS PET VACIAS 500 ML", "203", "01", 800, 1.95, None, 0,
             800, 860, {}, "PET-500", "N", "1"),
        ]),
    dict(
        interno="DEMO-EC01-001", fecha="2026-02-18", subreg="EC01", aduana="001",
        salida="001", cliente="30500001239", despachante="27312345671", vendedor="V002",
        facturas=["E-0003-00000871"], divisa="DOL", cambio=1, flete=0, seguro=0,
        condicion="FOB", pais="438", motivo="", autoriz="", plazo="", cierre="20/02/2026",
        embarque="", iva="", ganancias="", oncca="S",
        lineas=[
            ("0201.30.00", "100", "CORTES BOVINOS DESHUESADOS ENFRIADOS - LOMO", "200", "01",
             18000, 9.8, None, 0, 18000, 18900, {"AA": "FRIGORIFICO LAS PAMPAS",
                                                 "CO": "CO01", "TR": "TR02"},
             "LOMO-ENF", "N", "1", "NO", "LOM"),
            ("2204.21.00", "100", "VINO MALBEC EN BOTELLAS DE 750 ML", "200", "05", 9000, 3.2,
             None, 0, 8100, 12600, {"AA": "FINCA D'ALESSANDRO", "ZC": 140, "VA": "VA01"},
             "VINO-MAL", "N", "1"),
        ]),
    dict(
        interno="DEMO-IT01-001", fecha="2026-03-03", subreg="IT01", aduana="052", salida="",
        cliente="30712345671", despachante="20203040505", vendedor="V001",
        facturas=["FT-2026-00088", "FT-2026-00089", "FT-2026-00090"], divisa="DOL", cambio=1,
        flete=3200, seguro=185.75, condicion="CFR", pais="203", motivo="DTO.1439/96",
        autoriz="AT-1439-2026-0042", plazo="02-03-2027", cierre="", embarque="20/02/2026",
        iva="NO_VALIDA", ganancias="COMERC", oncca="N",
        lineas=[
            ("7208.51.00", "100", "CHAPA LAMINADA EN CALIENTE 12 MM", "203", "01", 48000, 0.72,
             None, 0, 48000, 48500, {}, "CH-LC-12", "N", "1"),
            ("7219.33.00", "100", "BOBINA ACERO INOXIDABLE LAMINADA EN FRIO", "203", "01", 12000,
             2.85, None, 0, 12000, 12150, {}, "BOB-INOX", "N", "1"),
            ("3901.10.10", "100", "POLIETILENO DE BAJA DENSIDAD EN PELLETS", "212", "01", 5000,
             1.42, None, 0, 5000, 5100, {}, "PEBD-PEL", "N", "1"),
        ]),
    dict(
        interno="DEMO-IC05-001", fecha="2026-03-09", subreg="IC05", aduana="073", salida="",
        cliente="30698765433", despachante="27312345671", vendedor="V002",
        facturas=["RE-55012"], divisa="060", cambio=1.084512, flete=4100, seguro=310,
        condicion="FCA", pais="438", motivo="", autoriz="", plazo="", cierre="",
        embarque="25/02/2026", iva="IVAAD2", ganancias="BDEUSO", oncca="N",
        lineas=[
            ("8422.30.10", "100", "LLENADORA ROTATIVA DE BOTELLAS 24 PICOS", "438", "07", 1,
             185000, None, 0, 6200, 7400, {"AA": "KRONTEC", "AB": "RF-24", "AI": "LL-24",
                                          "ZA": 2025, "EM": "EM01"}, "LL-24", "S", "1"),
            ("8479.89.99", "100", "ETIQUETADORA AUTOMATICA LINEAL", "417", "07", 2, 42500,
             None, 0, 1900, 2300, {"AA": "SACMITAL", "AB": "ET-L2", "AI": "ET-L2",
                                   "ZA": 2024, "EM": "EM01"}, "ET-L2", "S", "1"),
            ("8413.70.10", "100", "BOMBA CENTRIFUGA PARA LIQUIDOS ALIMENTICIOS", "438", "07", 4,
             6350, None, 0, 480, 560, {"AA": "KRONTEC", "AB": "BC-50", "AI": "BC-50",
                                       "ZA": 2025, "EM": "EM01"}, "BC-50", "S", "1"),
        ]),
]


def escribir_demo(filas):
    caratulas, facturas, subitems, articulos = [], [], [], []
    for op in OPERACIONES:
        lineas = []
        total = 0
        kilos = 0
        bruto = 0
        for n, l in enumerate(op["lineas"], start=1):
            (item, ap, desc, pais, unidad, cant, precio, est, esp, kgn, kgb, vals, art, bk,
             estado) = l[:15]
            categoria, corte = (l[15], l[16]) if len(l) > 15 else ("", "")
            pos, c = posicion(filas, item, ap)
            fob = round(cant * precio, 2)
            total += fob
            kilos += kgn
            bruto += kgb
            estadistica = c["012"]
            if est is None:
                est = kgn if estadistica == "01" else cant
            deresp = c["020"]
            lapi = "S" if c["059"] == "*" else "N"
            sufijos = cadena_sufijos(pos[:14], vals)
            sbtrei = c["019"] if op["subreg"].startswith("E") else ""
            lineas.append([n, op["interno"], "CAT-" + op["cliente"][-4:], art, pos, unidad,
                           num(cant), num(precio), num(fob), estadistica, num(est), deresp,
                           num(esp if deresp else 0), pais, op["pais"] if op["subreg"][0] == "I"
                           else "200", estado, sufijos, bk, "", "0", "0", "", "0", "0", "0",
                           sbtrei, lapi, num(kgn), num(kgb), desc, "", "", "", categoria, corte,
                           "", "N"])
            articulos.append(["CAT-" + op["cliente"][-4:], art, desc, pais, pais, unidad,
                              estado, bk, "", "", categoria, corte, pos, sufijos, num(precio),
                              num(round(kgn / cant, 4)), "1", "KORVEN", op["fecha"]])
        subitems += lineas
        for o, f in enumerate(op["facturas"], start=1):
            facturas.append([op["interno"], o, f])
        exporta = op["subreg"].startswith("E")
        v = {k: "" for k in CARATULA}
        v.update(interno=op["interno"], fechaalta=op["fecha"], idsubreg=op["subreg"],
                 idaduana=op["aduana"], idaduanasal=op["salida"], cuitcliente=op["cliente"],
                 cuitdespaduana=op["despachante"], idvendedor=op["vendedor"],
                 factura1=",".join(op["facturas"])[:79], factura2=NOMBRES[op["vendedor"]],
                 factura3=NOMBRES[op["despachante"]], factura6="0",
                 factura7=NOMBRES[op["cliente"]], factura8="S", facturas="S",
                 fobdivisas=num(round(total, 2)), fobcoddivisas=op["divisa"],
                 fobdivcambio=num(op["cambio"]), fletedivisas=num(op["flete"]),
                 # The header asks for the currency of freight and insurance even at 0.
                 fletecoddivisas=op["divisa"], fletedivcambio=num(op["cambio"]),
                 segurodivisas=num(op["seguro"]),
                 segurocoddivisas=op["divisa"], segurodivcambio=num(op["cambio"]),
                 seguroporcentaje="0", valoraprorratear="0", ajusteincluir="0",
                 ajustededucir="0", factorconver="0", idcondiciondeventa=op["condicion"],
                 idpaisdestino=op["pais"], motivodestsuspensiva=op["motivo"],
                 autorizdestsuspensiva=op["autoriz"], plazoautorizacion=op["plazo"],
                 cierreventa=op["cierre"], fechaembarque=op["embarque"], dcestmerc="1",
                 dcforzarestmerc="N", dcpaisorigen="", dcforzarpaisorigen="N",
                 dcpaisdestino=op["pais"], dcstandard="N", dcregalias="N",
                 dcbancos="011" if exporta else "", dckgneto="0", dccomext="0",
                 opcionesiva=op["iva"], opcionesganancias=op["ganancias"],
                 onccahabilitado=op["oncca"], factura9="")
        if exporta:
            v.update(bulnro="1/8", bulcod="32", bultip="A", bulpes=num(bruto), buldes="8",
                     marcabul="LAS PAMPAS EXPORT", via="1", trans="MSC ANNA", bandera="426",
                     cuittrans="30543210982", factura10=NOMBRES["30543210982"],
                     venemb="31-12-27", onccaacuerdo="481", onccaelaborador="1021",
                     onccaespecie="BOV", onccafaneador="5001", onccamatadero="5001",
                     onccameccoorgbio="C", onccares3106="01", onccasispro="P",
                     onccacategoria="NO", onccacortes="LOM")
        else:
            v.update(bulpes=num(bruto), buldes="0")
        caratulas.append([v[k] for k in CARATULA])
    escribir("demo/caratula.csv", CARATULA, caratulas)
    escribir("demo/facturas.csv", ["interno", "orden", "factura"], facturas)
    escribir("demo/subitems.csv", SUBITEMS, subitems)
    escribir("demo/coment.csv", ["interno", "coment"], [
        ["DEMO-IC04-001", "Entregar en el depósito de D'Agostino; avisar al cliente antes."],
        ["DEMO-IT01-001", "Plazo de la temporal: 360 días desde el libramiento."]])
    catalogos = sorted({(a[0],) for a in articulos})
    escribir("catalogos/catalogos.csv", ["idcatalogo", "descripcion", "cuit"],
             [[c[0], "CATALOGO DE " + NOMBRES[op["cliente"]], op["cliente"]]
              for c in catalogos for op in OPERACIONES if c[0] == "CAT-" + op["cliente"][-4:]])
    escribir("catalogos/catarticulos.csv",
             ["idcatalogo", "idarticulo", "descripcion", "idpais", "idpaisproc", "idunidad",
              "estadomerc", "biendeuso", "codigoean", "otros", "onccacategoria", "onccacortes",
              "ncm", "sufijos", "preciounitario", "kgunitario", "cantidad", "usuario", "fecha"],
             articulos)


if __name__ == "__main__":
    main()
